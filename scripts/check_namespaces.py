#!/usr/bin/env python3
"""Checks in which namespace the plug-in's headers stand.

The contract's names carry prefixes and stand in no namespace; so do all headers of the plug-in's own folder and of
host/, which are about them. What only computes, in logic/, and what goes beyond the contract, in reading/, is ours and
stands in namespace plotix. Usage: check_namespaces.py [ROOT]
"""
import pathlib
import re
import sys

PLUGIN = pathlib.PurePosixPath("plugins/PlotixPlugIn")
GLOBAL = (PLUGIN, PLUGIN / "host")
OURS = (PLUGIN / "logic", PLUGIN / "reading")
# Opens namespace plotix for more than the names of things it only mentions.
OPENS = re.compile(r"^namespace plotix \{$(?!(\n+(class|struct) \w+;)+\n+\})", re.MULTILINE)


def main():
    root = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else pathlib.Path(__file__).resolve().parent.parent)
    problems = []
    for folder in GLOBAL + OURS:
        for header in sorted((root / folder).glob("*.h")):
            opens = bool(OPENS.search(header.read_text(encoding="utf-8")))
            if opens and folder in GLOBAL:
                problems.append(f"{folder}/{header.name}: stands in namespace plotix; this folder's headers do not")
            if not opens and folder in OURS:
                problems.append(f"{folder}/{header.name}: does not stand in namespace plotix")
    print("\n".join(problems) or "the plug-in's headers stand where they should")
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())
