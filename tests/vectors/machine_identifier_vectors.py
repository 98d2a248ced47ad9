#!/usr/bin/env python3
"""Writes machine_identifier_vectors.txt: what is derived from machine identifiers, with Python's hmac and uuid.

Run it in this folder; the output is the same every time. A row is `machine identifier|identifier`.
"""

import hashlib
import hmac
import random
import uuid

PURPOSE = uuid.UUID("ffcc904c-5716-c6d6-dc46-c99240be1491")

source = random.Random(20010101)


def identifier(machine):
    digest = bytearray(hmac.digest(machine, PURPOSE.bytes, hashlib.sha256)[:16])
    return str(uuid.UUID(bytes=bytes(digest), version=4)).upper()


machines = [bytes(15) + b"\x01", b"\xff" * 16] + [source.randbytes(16) for _ in range(30)]
with open("machine_identifier_vectors.txt", "w", encoding="ascii") as file:
    file.writelines(f"{machine.hex()}|{identifier(machine)}\n" for machine in machines)
