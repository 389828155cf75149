#!/usr/bin/env python3
"""Fails when a C++ name of the tree is written in upper case.

Upper case is kept for macros (those the tree defines and those of the
system and of the test frameworks) and for the exports of the C header.
Words in strings and comments are not names and are not looked at.
"""
import pathlib
import re
import subprocess
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent))
from rename_identifiers import C_HEADER, CPP_SUFFIXES, EXPORTS, SYSTEM_MACRO, code_tokens  # noqa: E402

ROOT = pathlib.Path(__file__).resolve().parent.parent
SHOUTING = re.compile(r"^[A-Z][A-Z0-9_]*[A-Z][A-Z0-9_]*$")  # two capitals or more, no small letter


def main():
    files = [ROOT / f for f in subprocess.run(["git", "ls-files"], cwd=ROOT, capture_output=True, text=True,
                                              check=True).stdout.split()
             if pathlib.Path(f).suffix in CPP_SUFFIXES and f != C_HEADER and (ROOT / f).exists()]
    texts = {path: path.read_text(encoding="latin-1") for path in files}
    macros = {m for text in texts.values() for m in re.findall(r"#\s*define\s+(\w+)", text)}
    found = 0
    for path, text in texts.items():
        line, last = 1, []
        for m in code_tokens(text):
            piece = m.group(0)
            if m.lastgroup == "ident" and SHOUTING.match(piece) and piece not in macros and piece not in EXPORTS \
                    and not SYSTEM_MACRO.match(piece) and last[-3:] != ["std", ":", ":"]:
                print(f"{path.relative_to(ROOT)}:{line}: {piece}")
                found += 1
            line += piece.count("\n")
            if m.lastgroup != "comment" and not piece.isspace():
                last = (last + [piece])[-3:]
    if found:
        print(f"{found} names in upper case; see docs/architecture.md for the naming convention")
        return 1
    print(f"names: {len(files)} files follow the naming convention")
    return 0


if __name__ == "__main__":
    sys.exit(main())
