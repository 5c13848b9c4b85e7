#!/usr/bin/env python3
"""Prints the peers' figures of build/peers/*.jsonl as a Markdown table, one column a peer.

table.py [FILE]   FILE: figures of this project's own bench (its --json); adds the column and how many times faster it is
                  than the fastest peer. Exit code 1: it takes a larger share of a peer's figure of the same run than
                  it may.
"""
import glob
import json
import os
import sys

PEERS = ["qt6", "ag-grid", "perspective", "gtk4", "muParser", "LuaJIT", "floor"]

# Label, work, key of the own bench (None: it has none; {} is 10k, 100k or 1m), factor from its unit to seconds (or
# bytes), and for each peer the
# beginning of the variant that is its best honest one.
LINES = [
    ("tick, view attached, repaint every 200 ms", "W1", "w1_tick_ns_{}", 1e-9,
     {"qt6": "QTableView on proxy, repaint <=1/200ms", "ag-grid": "applyTransactionAsync", "perspective": "flat view",
      "gtk4": "signal per update, main loop <=1/200ms"}),
    ("tick without a proxy", "W1", "w1_tick_ns_{}", 1e-9, {"qt6": "QTableView on model, repaint <=1/200ms"}),
    ("tick, half of them flip the filter", "W1b", "w1b_flip_ns_{}", 1e-9,
     {"qt6": "50% of ticks flip, repaint", "ag-grid": "50% of ticks flip", "perspective": "50% of ticks flip"}),
    ("the same, filter rebuilt every 200 ms", "W1b", "w1b_flip_ns_{}", 1e-9,
     {"qt6": "50% flip, dynamicSortFilter off", "gtk4": "50% flip"}),
    *[("filter: " + variant, "W2", key, 1e-3,
       {"qt6": "model only: " + variant, "ag-grid": variant, "perspective": variant})
      for variant, key in (("prefix SYM0001", "w2_prefix_ms_{}"), ("contains 99", "w2_contains_ms_{}"),
                           ("d0 > 500", "w2_number_ms_{}"))],
    *[("the same until painted: " + variant, "W2", key, 1e-3, {"qt6": variant, "gtk4": variant})
      for variant, key in (("prefix SYM0001", "w2_prefix_paint_ms_{}"), ("d0 > 500", "w2_number_paint_ms_{}"))],
    *[("sort: " + variant, "W3", key, 1e-3,
       {"qt6": "model only: " + variant, "ag-grid": variant, "perspective": variant})
      for variant, key in (("double", "w3_double_ms_{}"), ("integer", "w3_integer_ms_{}"),
                           ("text natural", "w3_natural_ms_{}"))],
    *[("the same until painted: " + variant, "W3", None, 1e-3, {"qt6": variant, "gtk4": variant})
      for variant in ("double", "integer", "text natural")],
    ("10k adds and 10k deletes", "W4", "w4_churn_ms_{}", 1e-3,
     {"qt6": "model reset", "ag-grid": "applyTransaction", "perspective": "remove", "gtk4": "g_list_store_remove"}),
    ("the same, one by one", "W4", "w4_churn_ms_{}", 1e-3, {"qt6": "remove run by run"}),
    ("memory of the grid", "W5", "w5_bytes_per_row_{}", 1,
     {"qt6": "added by proxy", "ag-grid": "added by grid", "perspective": "added by one", "gtk4": "added by models"}),
    ("one full repaint, 43 x 20 cells", "W0", "repaint_ms_43x20", 1e-3, {"qt6": "one full repaint"}),
    ("tabs inserted, scrolled to the end, painted", "W7", "tabs_500_ms", 1e-3, {"qt6": "QTabBar"}),
    *[("evaluation: " + variant, "W6", key, 1e-6, {"muParser": variant, "LuaJIT": variant, "floor": variant})
      for variant, key in (("fresh text (last-close)/close*100", "w6_short_us"),
                           ("fresh text, 10 operands", "w6_ten_us"))],
]

# Label, rows, peer, and the share of the peer's figure that the own one may take at most.
SHARES = [("the same until painted: prefix SYM0001", 100000, "qt6", 0.8),
          ("the same until painted: d0 > 500", 100000, "qt6", 0.9)]


def read_peers():
    folder = os.path.join(os.path.dirname(os.path.abspath(__file__)), "../../build/peers")
    figures, remarks = [], []
    for name in sorted(glob.glob(os.path.join(folder, "*.jsonl"))):
        with open(name, encoding="utf-8") as file:
            for line in filter(str.strip, file):
                figure = {**json.loads(line), "at": os.path.getmtime(name)}
                (figures if "w" in figure else remarks).append(figure)
    return figures, remarks


def amount(figure):
    """Seconds for one operation or action; bytes a row."""
    return figure["value"] if "value" in figure else figure["wall_med"] / (figure["count"] or 1)


def show(value, work):
    if value is None:
        return "-"
    if work == "W5":
        return f"{value:.0f} B/row"
    for unit, size in (("ns", 1e-9), ("us", 1e-6)):
        if value < 1000 * size:
            return f"{value / size:.3g} {unit}"
    return f"{value * 1e3:.2f} ms" if value < 0.1 else f"{value * 1e3:,.0f} ms"


def own_figure(own, key, factor, rows):
    """None where the own bench has no such figure: some work, and some numbers of rows, only peers do."""
    if key is None:
        return None
    name = key.format({10000: "10k", 100000: "100k", 1000000: "1m"}.get(rows, rows))
    return own[name] * factor if name in own else None


def judge(shares):
    """Prints each share; False when one is too large."""
    held = True
    for label, rows, peer, most in SHARES:
        if share := shares.get((label, rows, peer)):
            held = held and share <= most
            word = "held" if share <= most else "MISSED"
            print(f"{word}: {label}, {rows:,} rows: {share:.2f} of {peer}'s, at most {most}")
    return held


def main():
    figures, remarks = read_peers()
    own, measured = {}, 0
    if len(sys.argv) > 1:
        measured = os.path.getmtime(sys.argv[1])
        with open(sys.argv[1], encoding="utf-8") as file:
            own = json.load(file)
    shares = {}
    peers = [p for p in PEERS if any(f["peer"] == p for f in figures)]
    head = ["work", "rows"] + (["Quor", "ratio"] if own else []) + peers
    print("| " + " | ".join(head) + " |\n|" + "---|" * len(head))
    for label, work, key, factor, variants in LINES:
        of_work = [f for f in figures if f["w"] == work]
        for rows in sorted({f["rows"] for f in of_work}):
            best = [f for f in of_work if f["rows"] == rows and f["peer"] in variants
                    and f["variant"].startswith(variants[f["peer"]])]
            found = {f["peer"]: amount(f) for f in best}
            if not found:
                continue
            cells = [label, f"{rows:,}"]
            if own:
                ours = own_figure(own, key, factor, rows)
                rivals = [value for peer, value in found.items() if peer != "floor"]
                ratio = f"{min(rivals) / ours:.1f}x" if ours and rivals else "-"
                cells += [show(ours, work), ratio]
                # Peers run after the own bench: what is older than FILE is of another run.
                shares.update({(label, rows, f["peer"]): ours / amount(f) for f in best
                               if ours and f["at"] >= measured})
            print("| " + " | ".join(cells + [show(found.get(p), work) for p in peers]) + " |")
    print()
    for remark in remarks:
        del remark["at"]
        print("ERROR" if "error" in remark else "version", json.dumps(remark))
    return 0 if judge(shares) else 1


sys.exit(main())
