#!/usr/bin/env python3
"""Moves the C++ tree from upper-case names to the project's naming convention.

Types become PascalCase (a leading T_ dropped), functions, variables,
constants, enumerators and namespaces snake_case, macros keep their upper
case; the public C++ interface (include/tmrdar/tmrdar.hpp) takes the standard
library's style, types in snake_case too. Names in string literals are never
touched. Comments are renamed where a word is one of the code's names, and the
Markdown documents where such a name stands in backticks or in a C++ block.

Which kind of name each word is comes from clang's own view of every unit
(python3-clang-14), through the compile commands of a build directory:

    cmake -S . -B build/names -G Ninja -DTMRDAR_BUILD_TESTS=ON -DTMRDAR_BUILD_BENCHMARKS=ON \
      -DCMAKE_EXPORT_COMPILE_COMMANDS=ON -DCMAKE_CXX_COMPILER=clang++
    scripts/rename_identifiers.py build/names [--dry-run]

A word that clang does not see (in a macro's body or argument, or in code
that the build leaves out) is judged by its spelling and its neighbours.
It may be run again: names already converted are left as they are.
"""
import bisect
import pathlib
import re
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent

# Files named after what they hold.
FILE_RENAMES = {
    "src/header/tide3_database_files.h": "src/header/format_reader.h",
    "src/header/tide3_database_files.cpp": "src/header/format_reader.cpp",
    "src/core/file/t_file.h": "src/core/file/record_file.h",
    "src/core/file/t_file.cpp": "src/core/file/record_file.cpp",
    "tests/core/file/t_file_test.cpp": "tests/core/file/record_file_test.cpp",
    "src/core/lists/t_int_list.h": "src/core/lists/int_list.h",
    "src/core/lists/t_int_list.cpp": "src/core/lists/int_list.cpp",
    "tests/core/lists/t_int_list_test.cpp": "tests/core/lists/int_list_test.cpp",
    "src/core/strings/t_string.h": "src/core/strings/string.h",
    "src/core/strings/t_string.cpp": "src/core/strings/string.cpp",
    "src/core/strings/t_string_conversions.cpp": "src/core/strings/string_conversions.cpp",
    "src/core/strings/t_string_io.cpp": "src/core/strings/string_io.cpp",
    "tests/core/strings/t_string_test.cpp": "tests/core/strings/string_test.cpp",
    "tests/core/strings/t_string_conversions_test.cpp": "tests/core/strings/string_conversions_test.cpp",
    "tests/core/strings/t_string_io_test.cpp": "tests/core/strings/string_io_test.cpp",
}

# Names whose new form is not the mechanical one.
OVERRIDES = {
    # namespaces named after what they hold
    "REVISION_IDS": "request_checks",
    "V861_SHAPE_FUNCTION_DATA": "shape_functions",
    "MOD_FILE": "record_files",
    "MOD_DATA_BLOCK": "data_blocks",
    "MOD_STRING": "strings",
    "MOD_INT_LIST": "int_lists",
    "MOD_COMMON_DATABASE": "common_database",
    "MOD_SEABED_PROFILE": "seabed_profile",
    "MOD_PLASTIC_HARDENING": "plastic_hardening",
    # the reader of a format and its instances
    "TIDE3_DATABASE_FILES": "FormatReader",
    "TIDE3_DATABASE_MODULE": "reader_for_version",
    "SELECTED_MODULE": "selected_reader",
    "T_FILE": "RecordFile",
    # words that are keywords in lower case
    "INT": "integer",
    "CASE": "test_case",
    "TRY": "attempt",
    "MODULE": "module_name",
    "DB": "reader",
}

# Functions and constants whose plain name would meet a local of that
# spelling where they are used.
VALUE_OVERRIDES = {"LINES": "lines_of", "FIELDS": "fields_of"}

# Names that are types in one place and functions in another: called, they
# are the function (where clang does not see them, as in a test macro).
CALLED_NAMES = {"ASK", "WALK", "LINES", "REAL", "MODEL", "TABLE", "ROWS", "WORDS"}

# Names that would meet a local of the same spelling in one file.
PER_FILE_OVERRIDES = {
    "tests/frame/request_sweep_test.cpp": {"STEPS": "step_count", "EXPECTED": "expected_outcome",
                                           "HISTORY": "history_of"},
    "tests/seabed/seabed_library_test.cpp": {"PLANE": "plane_floor", "WAVY": "wavy_floor", "AT": "surface_at"},
    "tests/tools/cli_sample_test.cpp": {"JOB": "sample_job", "ROWS": "table_rows", "REAL": "real_of"},
    "tests/tools/cli_input_test.cpp": {"REASON": "reason_of"},
    "benchmarks/header/open_benchmark.cpp": {"ELEMENTS": "element_count", "NODES": "node_count"},
}

# Types of the public interface whose name is also an internal type's:
# (token, folders where the token names the internal type).
SHARED_TYPE_NAMES = {
    "JOB": ("src/builder/", "tests/builder/"),
    "REQUEST": ("src/frame/", "tests/frame/request_sweep_test.cpp"),
    "ITEM": ("tests/frame/request_sweep_test.cpp",),
    "NEEDS": ("src/frame/",),
    "FAILURE": ("src/seabed/",),
}
# Qualifiers that decide a shared name by themselves.
INTERNAL_QUALIFIERS = {"builder", "request_checks", "seabed"}
PUBLIC_TYPE_OVERRIDES = {"FAILURE": "error"}

# Macros of the system, the C library and the test and benchmark frameworks.
SYSTEM_MACRO = re.compile(
    r"^((EXPECT|ASSERT)_(EQ|NE|LT|LE|GT|GE|TRUE|FALSE|NEAR|DOUBLE_EQ|FLOAT_EQ|STREQ|STRNE|THROW|NO_THROW|ANY_THROW|"
    r"THAT|EXIT|DEATH)|GTEST_\w+|INSTANTIATE_TEST_SUITE_P|SCOPED_TRACE|TEST|TEST_F|TEST_P|ADD_FAILURE|"
    r"SUCCEED|BENCHMARK|BENCHMARK_CAPTURE|BENCHMARK_MAIN|O_\w+|S_IS\w+|SEEK_\w+|RTLD_\w+|F_[GS]ET\w+|"
    r"E(RANGE|INTR|NOENT|ACCES|EXIST|AGAIN|BADF|INVAL)|WEXITSTATUS|WIFEXITED|WIFSIGNALED|WTERMSIG|"
    r"STD(IN|OUT|ERR)_FILENO|U?INT\d*_(MAX|MIN)|INT_(MAX|MIN)|SIZE_MAX|FLT_\w+|DBL_\w+|NAN|INFINITY|EOF|"
    r"NULL|PATH_MAX|CHAR_BIT|EXIT_SUCCESS|EXIT_FAILURE|MAP_(SHARED|PRIVATE|FAILED)|PROT_\w+|TMRDAR_\w+|"
    r"__\w+|_[A-Z]\w*|"
    # The Windows API's types and constants, in the Windows side of the platform layer.
    r"HANDLE|DWORD|SHORT|SIZE_T|COORD|OVERLAPPED|LARGE_INTEGER|P?SRWLOCK|CONSOLE_SCREEN_BUFFER_INFO|"
    r"BY_HANDLE_FILE_INFORMATION|CP_UTF8|MAX_PATH|INVALID_\w+|FILE_\w+|GENERIC_\w+|OPEN_EXISTING|STD_\w+_HANDLE|"
    r"PAGE_\w+|ERROR_\w+)$"
)
# The exports are the binary interface: their names and the C header stay.
EXPORTS = {"XIT"}
C_HEADER = "include/tmrdar/tmrdar.h"
# Format names stay as they are in prose.
PROSE_WORDS = re.compile(r"^(V8\d\d|UTF\w*|ASCII|IEEE|NaN|API|CLI|CSV|SVG|PNG|OK|[A-Z]\d?)$")

CPP_SUFFIXES = {".h", ".hpp", ".cpp"}

TOKEN = re.compile(
    r'(?P<comment>//[^\n]*|/\*.*?\*/)'
    r'|(?P<raw>R"(?P<delim>[^(\s]*)\(.*?\)(?P=delim)")'
    r'|(?P<string>"(?:[^"\\\n]|\\.)*")'
    r"|(?P<char>'(?:[^'\\\n]|\\.)*')"
    r"|(?P<number>\b\d(?:'?[\w.])*(?:[eEpP][+-]\w+)?)"
    r'|(?P<ident>\b[A-Za-z_]\w*\b)'
    r'|(?P<other>.)',
    re.S,
)
CALL = re.compile(r"\s*\(")
USING_DECLARATION = re.compile(r"[ \t]*using\s+[\w:]+\s*;")
WORD = re.compile(r"\b[A-Za-z_]\w*\b")


def classify(build):
    """(path, line, column) of each name in the tree -> ("type" | "ns" | "other", public)."""
    import json
    import os
    import shlex
    from concurrent.futures import ProcessPoolExecutor

    commands = json.load(open(os.path.join(build, "compile_commands.json")))
    units = []
    for c in commands:
        args, skip = [], False
        for a in shlex.split(c["command"])[1:]:
            if skip:
                skip = False
            elif a in ("-o", "-c"):
                skip = True
            elif a != c["file"]:
                args.append(a)
        units.append((c["file"], args))
    found = {}
    with ProcessPoolExecutor(max_workers=os.cpu_count() or 2) as pool:
        for part in pool.map(classify_unit, units):
            for key, cands in part.items():
                found.setdefault(key, set()).update(cands)
    result = {}
    for key, cands in found.items():
        ours = {c for c in cands if c[1] and not c[1].startswith("/")}
        pool = ours or cands
        kinds = {c[0] for c in pool}
        if len(kinds) == 1:
            public = any(c[1] == "include/tmrdar/tmrdar.hpp" for c in pool if c[0] == "type")
            result[key] = (kinds.pop(), public)
    return result


def classify_unit(unit):
    import os

    import clang.cindex as ci

    if not ci.Config.loaded:
        ci.Config.set_library_file("/usr/lib/llvm-14/lib/libclang-14.so.1")
    K = ci.CursorKind
    type_decls = {K.STRUCT_DECL, K.CLASS_DECL, K.UNION_DECL, K.ENUM_DECL, K.TYPEDEF_DECL, K.TYPE_ALIAS_DECL,
                  K.TEMPLATE_TYPE_PARAMETER, K.CLASS_TEMPLATE, K.CLASS_TEMPLATE_PARTIAL_SPECIALIZATION,
                  K.TYPE_ALIAS_TEMPLATE_DECL, K.TEMPLATE_TEMPLATE_PARAMETER}
    namespaces = {K.NAMESPACE, K.NAMESPACE_ALIAS}
    refs = {K.MEMBER_REF, K.MEMBER_REF_EXPR, K.DECL_REF_EXPR, K.OVERLOADED_DECL_REF, K.VARIABLE_REF}
    root = str(ROOT) + "/"
    found = {}

    def relative(loc):
        if loc is None or loc.file is None:
            return None
        p = os.path.realpath(loc.file.name)
        return p[len(root):] if p.startswith(root) and "/build/" not in p[len(root):] else p

    def put(loc, kind, decl):
        path = relative(loc)
        if path is None or path.startswith("/"):
            return
        decl_path = relative(decl.location) if decl is not None else None
        found.setdefault((path, loc.line, loc.column), set()).add((kind, decl_path))

    def kind_of(decl):
        try:
            k = decl.kind
        except ValueError:
            return None, decl
        if k in type_decls:
            return "type", decl
        if k in namespaces:
            return "ns", decl
        if k in (K.CONSTRUCTOR, K.DESTRUCTOR):
            return "type", decl.semantic_parent
        return "other", decl

    def walk(cursor, top):
        for child in cursor.get_children():
            path = relative(child.location)
            inside = path is not None and not path.startswith("/")
            if top and not inside:
                continue
            try:
                k = child.kind
            except ValueError:
                k = None
            if inside and k is not None:
                if k in type_decls or k in namespaces or k in (K.CONSTRUCTOR, K.DESTRUCTOR):
                    put(child.location, *kind_of(child))
                elif k in (K.TYPE_REF, K.TEMPLATE_REF):
                    put(child.location, "type", child.referenced)
                elif k == K.USING_DECLARATION and child.referenced is not None:
                    put(child.location, *kind_of(child.referenced))
                elif k == K.NAMESPACE_REF:
                    put(child.location, "ns", child.referenced)
                elif k in refs:
                    ref = child.referenced
                    if ref is not None:
                        kind, decl = kind_of(ref)
                        if kind:
                            put(child.location, kind, decl)
                elif k.is_declaration() and child.spelling:
                    put(child.location, "other", child)
            walk(child, False)

    path, args = unit
    index = ci.Index.create()
    tu = index.parse(path, args=args + ["-resource-dir", "/usr/lib/llvm-14/lib/clang/14.0.6"])
    walk(tu.cursor, True)
    return found


def is_upper_name(token):
    return re.search(r"[A-Z]", token) is not None and re.search(r"[a-z]", token) is None


def snake(token):
    return token.lower()


def pascal(token):
    if token.startswith("T_") and len(token) > 2:
        token = token[2:]
    return "".join(part[:1].upper() + part[1:].lower() for part in token.split("_") if part)


def cpp_files():
    out = subprocess.run(["git", "ls-files"], cwd=ROOT, capture_output=True, text=True, check=True).stdout.split()
    return [ROOT / f for f in out if pathlib.Path(f).suffix in CPP_SUFFIXES and (ROOT / f).exists() and f != C_HEADER]


def code_tokens(text):
    for m in TOKEN.finditer(text):
        yield m


def collect(files):
    """The names the tree declares, by kind."""
    types, namespaces, macros, public_types = set(), set(), set(), set()
    decl = re.compile(
        r"\b(?:struct|class|union|enum\s+class|enum\s+struct|enum|typename|concept)\s+([A-Z][A-Z0-9_]*)\b"
        r"|\busing\s+([A-Z][A-Z0-9_]*)\s*="
        r"|\btypedef\b[^;]*\b([A-Z][A-Z0-9_]*)\s*;"
    )
    for path in files:
        text = path.read_text(encoding="latin-1")
        code = "".join(
            m.group(0) if m.lastgroup not in ("comment", "string", "raw", "char") else " " for m in code_tokens(text)
        )
        for m in decl.finditer(code):
            name = next(g for g in m.groups() if g)
            types.add(name)
            if path.name == "tmrdar.hpp":
                public_types.add(name)
        for m in re.finditer(r"\bnamespace\s+([\w:]+)\s*[{=]", code):
            for part in m.group(1).split("::"):
                if is_upper_name(part):
                    namespaces.add(part)
        for m in re.finditer(r"\bnamespace\s+(\w+)\s*=", code):
            if is_upper_name(m.group(1)):
                namespaces.add(m.group(1))
        for m in re.finditer(r"#\s*define\s+(\w+)", code):
            macros.add(m.group(1))
    types -= namespaces
    return types, namespaces, macros, public_types


class Renamer:
    def __init__(self, types, namespaces, macros, public_types, classes):
        self.types, self.namespaces, self.macros, self.public_types = types, namespaces, macros, public_types
        self.classes = classes
        self.names = set()
        self.used_internal = set()
        self.values = set()

    def keeps(self, token):
        return not is_upper_name(token) or token in self.macros or token in EXPORTS or SYSTEM_MACRO.match(token)

    def internal(self, token, relpath, qualifier):
        if qualifier in INTERNAL_QUALIFIERS or token in self.used_internal:
            return True
        if qualifier == "tmrdar":
            return False
        return any(relpath.startswith(p) for p in SHARED_TYPE_NAMES[token])

    def new_name(self, token, relpath="", qualifier=None, member=False, seen=None, call=False):
        if self.keeps(token):
            return token
        if token in OVERRIDES:
            return OVERRIDES[token]
        name = token.replace("TIDE3_", "")
        if seen is not None:
            kind, public = seen
        else:  # judged by spelling and neighbours
            kind = "ns" if token in self.namespaces else "other"
            if kind == "other" and token in self.types and not member and not (call and token in CALLED_NAMES):
                kind = "type"
                public = token in self.public_types and not (
                    token in SHARED_TYPE_NAMES and self.internal(token, relpath, qualifier))
        if kind == "ns" or token in self.namespaces:
            return snake(name[4:] if name.startswith("MOD_") else name)
        if kind == "type":
            return PUBLIC_TYPE_OVERRIDES.get(token, snake(name)) if public else pascal(name)
        if member:  # a member keeps its plain name
            return snake(name)
        overrides = PER_FILE_OVERRIDES.get(relpath, {})
        return overrides.get(token, VALUE_OVERRIDES.get(token, snake(name)))

    def code(self, text, relpath):
        # A shared name brought in from an inner namespace names the internal type.
        self.used_internal = {t for q, t in re.findall(r"using\s+[\w:]*?(\w+)::(\w+)\s*;", text) if q != "tmrdar"}
        out = []
        last = []  # the last two significant tokens
        line, line_start = 1, 0
        for m in code_tokens(text):
            kind, piece = m.lastgroup, m.group(0)
            if kind == "ident":
                qualifier = last[-2] if len(last) >= 2 and last[-1] == "::" else None
                member = bool(last) and last[-1] in (".", "->")
                seen = self.classes.get((relpath, line, m.start() - line_start + 1))
                using = USING_DECLARATION.match(text, line_start) is not None
                if using:
                    seen = None  # clang sees the declaration, not what it names
                call = piece in VALUE_OVERRIDES if using else CALL.match(text, m.end()) is not None
                new = piece if qualifier == "std" else self.new_name(piece, relpath, qualifier, member, seen, call)
                out.append(new)
                last = (last + [new])[-3:]
                continue
            newlines = piece.count("\n")
            if newlines:
                line += newlines
                line_start = m.start() + piece.rindex("\n") + 1
            if kind == "comment":
                out.append(self.prose(piece, relpath))
                continue
            out.append(piece)
            if kind == "other":
                if piece.isspace():
                    continue
                if piece == ":" and last and last[-1] == ":":
                    last = last[:-1] + ["::"]
                else:
                    last = (last + [piece])[-3:]
            else:
                last = (last + [piece])[-3:]
        return "".join(out)

    def known(self, token):
        return token in self.types or token in self.namespaces or token in self.names or token in OVERRIDES

    def prose(self, text, relpath):
        def one(m):
            token = m.group(0)
            if PROSE_WORDS.match(token) or not self.known(token):
                return token
            if token in PUBLIC_TYPE_OVERRIDES:
                return PUBLIC_TYPE_OVERRIDES[token]
            if token in self.values:  # a member or function of that name is the likelier meaning
                return self.new_name(token, relpath, member=True)
            return self.new_name(token, relpath)

        return WORD.sub(one, text)

    def markdown(self, text):
        def ticks(m):
            inner = m.group(1)
            # file names, command lines and label names stay
            if ".db" in inner or inner.startswith(("-", "tmrdar ")) or (" " in inner and not re.search(r"[<(]", inner)):
                return m.group(0)
            return "`" + WORD.sub(lambda w: self.prose(w.group(0), ""), inner) + "`"

        parts = re.split(r"(```cpp\n.*?```)", text, flags=re.S)
        for i, part in enumerate(parts):
            if part.startswith("```cpp"):
                parts[i] = self.code(part, "")
            else:
                parts[i] = re.sub(r"`([^`\n]+)`", ticks, part)
        return "".join(parts)


def main():
    dry = "--dry-run" in sys.argv
    build = next(a for a in sys.argv[1:] if not a.startswith("--"))
    cache = next((a.split("=", 1)[1] for a in sys.argv if a.startswith("--cache=")), None)
    if cache and pathlib.Path(cache).exists():
        import pickle

        classes = pickle.load(open(cache, "rb"))
    else:
        classes = {(FILE_RENAMES.get(path, path), line, column): kind
                   for (path, line, column), kind in classify(build).items()}
        if cache:
            import pickle

            pickle.dump(classes, open(cache, "wb"))
    for old, new in FILE_RENAMES.items():
        if (ROOT / old).exists() and not dry:
            subprocess.run(["git", "mv", old, new], cwd=ROOT, check=True)
    files = cpp_files()
    types, namespaces, macros, public_types = collect(files)
    renamer = Renamer(types, namespaces, macros, public_types, classes)
    for path in files:
        relpath = str(path.relative_to(ROOT))
        text = path.read_text(encoding="latin-1")
        starts = [0] + [i + 1 for i, c in enumerate(text) if c == "\n"]
        for m in code_tokens(text):
            if m.lastgroup == "ident" and not renamer.keeps(m.group(0)):
                renamer.names.add(m.group(0))
                line = bisect.bisect_right(starts, m.start())
                seen = classes.get((relpath, line, m.start() - starts[line - 1] + 1))
                if seen and seen[0] == "other":
                    renamer.values.add(m.group(0))
    include_map = {old.split("/", 1)[1]: new.split("/", 1)[1] for old, new in FILE_RENAMES.items()}
    base_map = {pathlib.Path(old).name: pathlib.Path(new).name for old, new in FILE_RENAMES.items()}
    changed = 0
    for path in files:
        relpath = str(path.relative_to(ROOT))
        text = path.read_text(encoding="latin-1")  # a character a byte, as clang counts columns
        new = renamer.code(text, relpath)
        for old, repl in include_map.items():
            new = new.replace(f'#include "{old}"', f'#include "{repl}"')
        if new != text:
            changed += 1
            if not dry:
                path.write_text(new, encoding="latin-1")
    # Build lists and documents.
    others = subprocess.run(["git", "ls-files"], cwd=ROOT, capture_output=True, text=True, check=True).stdout.split()
    for f in others:
        path = ROOT / f
        if not path.exists():
            continue
        text = None
        if path.name == "CMakeLists.txt":
            text = path.read_text()
            new = text
            for old, repl in base_map.items():
                new = re.sub(rf"\b{re.escape(old)}\b", repl, new)
        elif path.suffix == ".md":
            text = path.read_text()
            new = renamer.markdown(text)
            for old, repl in include_map.items():
                new = new.replace(old, repl)
            for old, repl in base_map.items():
                new = re.sub(rf"\b{re.escape(old)}\b", repl, new)
        if text is not None and new != text:
            changed += 1
            if not dry:
                path.write_text(new)
    print(f"{len(renamer.names)} names, {len(types)} types, {len(namespaces)} namespaces; {changed} files changed")


if __name__ == "__main__":
    main()
