"""Prints the measurements, and what the first program costs in parts of each other one."""


def _number(value, form):
    return "-" if value is None else format(value, form)


def _cells(row):
    memory = row.memory or (None, None, None)
    idle = row.idle or (None, None)
    return [
        row.name,
        _number(row.registration, ".1f"),
        *(_number(value, "d") for value in memory),
        _number(row.threads, "d"),
        _number(idle[0], "d"),
        _number(idle[1], ".1f"),
        _number(row.idle_signals, "d"),
        _number(row.event_cpu, ".2f"),
    ]


def _ratios(first, other):
    pairs = zip(first.memory, other.memory)
    return [other.name, *(f"{ours / theirs:.2f}" if theirs else "-" for ours, theirs in pairs)]


def _print(lines):
    widths = [max(len(line[column]) for line in lines) for column in range(len(lines[0]))]
    for line in lines:
        cells = [line[0].ljust(widths[0])]
        cells += [cell.rjust(width) for cell, width in zip(line[1:], widths[1:])]
        print("  ".join(cells))


def show(rows, idle):
    head = ["program", "register ms", "RSS kB", "PSS kB", "dirty kB", "threads",
            f"switches/{idle:g} s", f"cpu ms/{idle:g} s", f"signals/{idle:g} s", "cpu ms/event"]
    _print([head, *map(_cells, rows)])
    print("register: exec to RegisterStatusNotifierItem, the median; -: no such call is made")
    print("cpu ms/event is no measure of a program that polls /sys instead of hearing events")
    for row in rows:
        if row.memory is None:
            print(f"{row.name} ended by itself before it could be measured")
    measured = [row for row in rows if row.memory]
    if len(measured) > 1:
        print()
        first, *others = measured
        head = [f"{first.name} as part of", "RSS", "PSS", "dirty"]
        _print([head, *(_ratios(first, other) for other in others)])
