"""Puts the table of a run into the documents that show it, between two marks."""
import pathlib

BEGIN = "<!-- measured by ./bench, written by ./bench --write-tables -->"
END = "<!-- end of what was measured -->"
DOCUMENTS = ("README.md", "docs/performance.md")


def with_table(text, table):
    """The text with the table between its marks. Raises ValueError when they are not there in order."""
    begin, end = text.find(BEGIN), text.find(END)
    if begin < 0 or end < begin:
        raise ValueError("the marks around the table are missing")
    return text[:begin] + BEGIN + "\n\n" + table.strip() + "\n\n" + text[end:]


def write_tables(root, table):
    for name in DOCUMENTS:
        path = pathlib.Path(root) / name
        path.write_text(with_table(path.read_text(encoding="utf-8"), table), encoding="utf-8")
        print(f"wrote the table in {name}")
