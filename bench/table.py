"""Prints the measurements, and what the first program costs in parts of each other one."""


def _number(value, form):
    return "-" if value is None else format(value, form)


def _cells(row):
    memory = row.memory or (None, None, None)
    idle = row.idle or (None, None)
    return [
        row.name,
        _number(row.start, ".1f"),
        *(_number(value, "d") for value in memory),
        _number(row.threads, "d"),
        _number(idle[0], "d"),
        _number(idle[1], ".1f"),
        _number(row.idle_signals, "d"),
        _number(row.event_cpu, ".2f"),
    ]


def _costs(row):
    """What there is less of the better, by column; None where it says nothing of the program."""
    memory = row.memory or (None, None, None)
    idle = row.idle or (None, None)
    return [row.start, *memory, *idle, row.event_cpu]


def _ratio(ours, theirs):
    # Nothing is no part of nothing, and a part of 0 has no size.
    return "-" if ours is None or not theirs else f"{ours / theirs:.2f}"


def _ratio_lines(first, others):
    """A line for each other program; the column's least of the others is marked."""
    ours = _costs(first)
    theirs = [_costs(other) for other in others]
    least = [min((cost for cost in column if cost is not None), default=None)
             for column in zip(*theirs)]
    for other, costs in zip(others, theirs):
        cells = [_ratio(own, cost) + ("*" if cost is not None and cost == best else " ")
                 for own, cost, best in zip(ours, costs, least)]
        yield [other.name, *cells]


def _print(lines):
    widths = [max(len(line[column]) for line in lines) for column in range(len(lines[0]))]
    for line in lines:
        cells = [line[0].ljust(widths[0])]
        cells += [cell.rjust(width) for cell, width in zip(line[1:], widths[1:])]
        print("  ".join(cells))


def show(rows, idle):
    head = ["program", "start ms", "RSS kB", "PSS kB", "dirty kB", "threads",
            f"switches/{idle:g} s", f"cpu ms/{idle:g} s", f"signals/{idle:g} s", "cpu ms/event"]
    _print([head, *map(_cells, rows)])
    print("start: exec to RegisterStatusNotifierItem or, with an XEmbed icon, to its window's place in"
          " the tray, the median; -: neither comes")
    print("cpu ms/event: of all its threads, user and system, per battery change; -: it polls /sys")
    for row in rows:
        if row.memory is None:
            print(f"{row.name} ended by itself before it could be measured")
    measured = [row for row in rows if row.memory]
    if len(measured) > 1:
        print()
        first, *others = measured
        head = ["start", "RSS", "PSS", "dirty", "switches", "cpu idle", "cpu event"]
        _print([[f"{first.name} as part of", *(title + " " for title in head)],
                *_ratio_lines(first, others)])
        print("*: the least of the others in this column")
