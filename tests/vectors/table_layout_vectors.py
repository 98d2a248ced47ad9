#!/usr/bin/env python3
"""Writes table_layout_vectors.txt: columns of a table, a wished order, and what the two ways to reorder make of them.

Run it in this folder; the output is the same every time. A row is `columns|wish|by records|by identifiers`, each a
list of names with commas between them; a column without an identifier is `-`, and identifiers may come twice.
"""

import random


class Column:
    def __init__(self, name):
        self.name = name


def by_records(columns, wish):
    table = [Column(name) for name in columns]
    for place, name in enumerate(wish):
        if place >= len(table):
            break
        for column in table[place:]:
            if column.name is not None and column.name == name:
                table.remove(column)
                table.insert(place, column)
                break
    return [column.name for column in table]


def by_identifiers(columns, wish):
    table = [Column(name) for name in columns]
    cursor = 0
    place = 0
    while place < len(wish) and place < len(table):
        if wish[place] != table[place].name:
            while cursor < len(table):
                if wish[place] != table[cursor]:
                    table.insert(place, table.pop(cursor))
                    break
                cursor += 1
        place += 1
    return [column.name for column in table]


def written(names):
    return ",".join("-" if name is None else name for name in names)


def main():
    source = random.Random(3141)
    rows = [(["Bid", "Ask", "Last"], ["Last", "Bid", "Ask"]), (["Bid", "Ask", "Last"], ["Volume", "Last"])]
    for _ in range(300):
        names = [chr(ord("a") + source.randrange(9)) for _ in range(source.randrange(1, 9))]
        columns = [name if source.random() < 0.9 else None for name in names]
        wish = [name for name in columns if name is not None and source.random() < 0.8]
        wish += [chr(ord("a") + source.randrange(12)) for _ in range(source.randrange(3))]
        source.shuffle(wish)
        rows.append((columns, wish))
    with open("table_layout_vectors.txt", "w", encoding="ascii") as out:
        for columns, wish in rows:
            out.write("|".join(written(names) for names in (columns, wish, by_records(columns, wish),
                                                            by_identifiers(columns, wish))) + "\n")


if __name__ == "__main__":
    main()
