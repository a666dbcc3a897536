#!/usr/bin/env python3
"""Checks the translations in hostapp/core/texts against the texts in the sources.

Fails on a text without a finished translation, on an entry whose text stands in no source, on a plural form that is
not there, on placeholders (%1, %n) or mnemonics (&File) that a translation lost or added, and on a text that the
sources translate in a way scripts/update_texts.sh does not see. Usage: check_texts.py
"""
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ElementTree

ROOT = pathlib.Path(__file__).resolve().parent.parent
TEXTS = ROOT / "hostapp/core/texts"
SOURCES = ("base", "storage", "records", "plotkit", "plugins", "hostapp")

LITERAL = r'"(?:[^"\\]|\\.)*"'
# A call that translates a literal, in front of which a context may stand.
TRANSLATING = re.compile(r"\b(tr|localized|localizedString|translate|QT_TRANSLATE_NOOP)\(\s*"
                         r"(?:(?:QStringLiteral|QLatin1String)\(\s*)?((?:%s\s*)+)(?:,\s*((?:%s\s*)+))?" %
                         (LITERAL, LITERAL))


def entries(file):
    """(context, source) -> message, of one file."""
    return {(context.findtext("name"), message.findtext("source")): message
            for context in ElementTree.parse(file).getroot().iter("context") for message in context.iter("message")}


def forms(message):
    """The translations of a message: one, or one a plural form."""
    translation = message.find("translation")
    if message.get("numerus") == "yes":
        return [form.text or "" for form in translation.iter("numerusform")]
    return [translation.text or ""]


def is_finished(message):
    return message.find("translation").get("type") is None and all(forms(message))


def placeholders(text):
    return sorted(re.findall(r"%L?[1-9]|%L?n", text))


def mnemonics(text):
    return len(re.findall(r"&(?!&|\s|#?\w+;)", text.replace("&&", "")))


def check_entry(name, source, message):
    for form in forms(message):
        if placeholders(form) != placeholders(source):
            yield f"{name}: other placeholders than the text's own: {source}"
        if mnemonics(form) != mnemonics(source):
            yield f"{name}: another number of mnemonics: {source}"


def check_file(file, updated, sources):
    """`updated`: the same file after an update; `sources`: the texts of all sources."""
    for (context, source), message in entries(file).items():
        if (context, source) not in sources:
            yield f"{file.name}: dead, no source has it: {context}: {source}"
        elif not is_finished(message):
            yield f"{file.name}: unfinished: {context}: {source}"
        else:
            yield from check_entry(file.name, source, message)
    for (context, source), message in entries(updated).items():
        known = entries(file).get((context, source))
        if known is None:
            yield f"{file.name}: missing: {context}: {source}"
        elif len(forms(known)) != len(forms(message)) or known.get("numerus") != message.get("numerus"):
            yield f"{file.name}: plural forms are missing: {context}: {source}"


def joined(literals):
    """Literals as the compiler joins them."""
    text = "".join(literal[1:-1] for literal in re.findall(LITERAL, literals))
    return text.replace("\\n", "\n").replace('\\"', '"').replace("\\\\", "\\")


def check_calls(sources):
    texts = {source for _, source in sources}
    for folder in SOURCES:
        for file in sorted((ROOT / folder).rglob("*.cpp")) + sorted((ROOT / folder).rglob("*.h")):
            for call, first, second in TRANSLATING.findall(file.read_text(encoding="utf-8")):
                text = joined(second if call in ("translate", "QT_TRANSLATE_NOOP") else first)
                if text and text not in texts:
                    yield f"{file.relative_to(ROOT)}: not seen by update_texts.sh: {text}"


def main():
    problems = []
    with tempfile.TemporaryDirectory() as scratch:
        updated = pathlib.Path(scratch) / "texts"
        shutil.copytree(TEXTS, updated)
        update = subprocess.run([ROOT / "scripts/update_texts.sh", updated], check=True, stderr=subprocess.PIPE, text=True)
        # Such as a class without Q_OBJECT, whose texts would be looked up under another name than they are filed under.
        problems += [f"lupdate says: {line}" for line in sorted(set(update.stderr.splitlines()))]
        files = sorted(TEXTS.glob("*.ts"))
        # German has an entry for every text, English for plurals alone.
        sources = set(entries(updated / "plotix_de.ts"))
        for file in files:
            problems += check_file(file, updated / file.name, sources)
        problems += check_calls(sources)
    for problem in problems:
        print(problem)
    if problems:
        print("Run scripts/update_texts.sh, then translate what is unfinished.")
        return 1
    print(f"{len(files)} files of translations, {len(sources)} texts: nothing missing, nothing dead")
    return 0


if __name__ == "__main__":
    sys.exit(main())
