"""Results as text for a terminal, as JSON for programs, and as Markdown for the documents."""
import json
import os

PEER_ORDER = ["qcustomplot", "qcustomplot-fast", "qwt", "sqlite-rows", "sqlite-rows-16k", "memcpy",
              "qimage", "kst", "muparser", "records"]
PEER_TITLES = {
    "qcustomplot": "QCustomPlot", "qcustomplot-fast": "its fast lines", "qwt": "Qwt",
    "sqlite-rows": "SQLite rows", "sqlite-rows-16k": "SQLite rows on 16 KiB pages", "memcpy": "memcpy", "qimage": "QImage", "kst": "Kst", "muparser": "muParser",
    "records": "record by record",
}


def digits(value):
    """Three figures, and never an exponent."""
    if value >= 100:
        return f"{value:.0f}"
    if value >= 10:
        return f"{value:.1f}"
    return f"{value:.2f}" if value >= 1 else f"{value:.3g}"


def ratio(peer, ours):
    """How many times our time the peer takes."""
    return digits(peer / ours) + "×" if ours > 0 else "–"


def ordered(peers):
    return sorted(peers, key=lambda name: (PEER_ORDER + [name]).index(name))


def as_json(results):
    return json.dumps([{"case": each.case, "unit": "ms", "plotix": each.plotix.median,
                        "peers": {name: each.peers[name].median for name in ordered(each.peers)}}
                       for each in results], indent=2) + "\n"


def as_text(results):
    """A line for every case and peer."""
    rows = [["case", "cores", "Plotix ms", "±", "peer", "ms", "±", "ratio"]]
    for each in results:
        ours = [each.case, str(each.cores or "all"), digits(each.plotix.median), f"{each.plotix.spread:.0%}"]
        for name in ordered(each.peers):
            peer = each.peers[name]
            rows.append(ours + [name, digits(peer.median), f"{peer.spread:.0%}",
                                ratio(peer.median, each.plotix.median)])
            ours = [""] * 4
        if ours[0]:
            rows.append(ours + [""] * 4)
    widths = [max(len(row[column]) for row in rows) for column in range(len(rows[0]))]
    left = {0, 4}
    return "\n".join("  ".join(cell.ljust(width) if column in left else cell.rjust(width)
                               for column, (cell, width) in enumerate(zip(row, widths))).rstrip()
                     for row in rows) + "\n"


def notes(results, where):
    """Memory a sample, file sizes, rates: what the programs told beside their times. What is said once is not repeated."""
    lines = []
    for each in results:
        told = [(name, each.counters.get(name, {})) for name in ["plotix", *ordered(each.peers)]]
        memory = ", ".join(f"{name} {figures['bytes_per_sample']:.1f}" for name, figures in told
                           if figures.get("bytes_per_sample"))
        if memory and not any(line.endswith(": " + memory) for line in lines):
            lines.append(f"bytes of memory a sample, {each.case}: {memory}")
        for name, figures in told:
            if figures.get("values_per_second"):
                lines.append(f"values a second, {each.case}: {name} {figures['values_per_second'] / 1e9:.2f} billion")
            if figures.get("stayed", 0) > 0.01:
                lines.append(f"caution, {each.case}: {name} had {figures['stayed']:.0%} of its file in memory")
    if os.path.isdir(where.data):
        for name in sorted(os.listdir(where.data)):
            path = where.file(name)
            if os.path.isfile(path) and os.path.getsize(path) > 1_000_000:
                lines.append(f"file {name}: {os.path.getsize(path) / 1e6:.1f} MB")
    return lines


def as_markdown(run):
    """The table of a run as `record` keeps it, with what it was measured on."""
    lines = [f"{run['machine']}. {run['date']}, `{run['command']}`; load before {run['load'][0]:.2f}, after "
             f"{run['load'][1]:.2f}. Medians in milliseconds; × is how many times Plotix's time the other takes.", "",
             "| case | cores | Plotix | others |", "|---|--:|--:|---|"]
    for each in run["results"]:
        others = [f"{PEER_TITLES.get(name, name)} {digits(peer['ms'])} (**{ratio(peer['ms'], each['plotix'])}**)"
                  for name, peer in each["peers"].items()]
        lines.append(f"| `{each['case']}` | {each['cores'] or 'all'} | {digits(each['plotix'])} | "
                     f"{', '.join(others) or '–'} |")
    return "\n".join(lines + [""] + [f"- {note}" for note in run["notes"]]) + "\n"


def record(results, machine, date, command, load, told):
    """Everything a table needs, as plain values."""
    def plain(measured):
        return {"ms": measured.median, "spread": measured.spread, "rounds": len(measured.rounds)}
    return {"machine": machine, "date": date, "command": command, "load": load, "notes": told,
            "results": [{"case": each.case, "cores": each.cores, "plotix": each.plotix.median,
                         "spread": each.plotix.spread, "rounds": len(each.plotix.rounds),
                         "peers": {name: plain(each.peers[name]) for name in ordered(each.peers)}}
                        for each in results]}
