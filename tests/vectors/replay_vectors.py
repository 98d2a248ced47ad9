#!/usr/bin/env python3
"""Writes replay_vectors.txt: what the recorded quotes hold, counted with Python's json and decimal modules.

Run it in this folder. A row is `symbol|tick|quotes|changes|offTick|low|high|last`, one for each instrument that was
quoted: `changes` counts close prices that differ from the one before, `offTick` the open, high, low and close prices
that are no multiple of the tick, `low` and `high` are the extremes of all four, `last` is the last close price.
"""

import json
import pathlib
from decimal import Decimal

data = pathlib.Path(__file__).resolve().parents[2] / "examples" / "data"

ticks = {}
for entry in json.loads((data / "exchange_info.json").read_text())["symbols"]:
    for one in entry["filters"]:
        if one["filterType"] == "PRICE_FILTER":
            ticks[entry["symbol"]] = Decimal(one["tickSize"])

prices = {}
for line in (data / "ticks.ndjson").read_text().splitlines():
    quote = json.loads(line)
    prices.setdefault(quote["s"], []).append([Decimal(quote[key]) for key in "ohlc"])


def plain(value):
    return format(value.normalize(), "f")


with open("replay_vectors.txt", "w", encoding="utf-8") as out:
    for symbol, rows in sorted(prices.items()):
        tick = ticks[symbol]
        closes = [row[3] for row in rows]
        every = [price for row in rows for price in row]
        changes = sum(1 for before, now in zip(closes, closes[1:]) if before != now)
        off_tick = sum(1 for price in every if price % tick != 0)
        cells = [symbol, plain(tick), len(rows), changes, off_tick, plain(min(every)), plain(max(every)), plain(closes[-1])]
        out.write("|".join(str(cell) for cell in cells) + "\n")
