"""The output types and subtypes of a request, by number and by name, with
the names of the tmrdar tool."""

import numbers
from collections import namedtuple

from .errors import ArgumentError, ArgumentTypeError

OutputType = namedtuple("OutputType", "number name meaning max_subtype item needs")

# item: what names a request's item; needs: the file the output type reads.
OUTPUT_TYPES = tuple(OutputType(*row) for row in (
    (1, "time", "time of the step", 0, "none", "nothing"),
    (2, "step-word-3", "third word of the step record", 0, "none", "nothing"),
    (3, "surface-elevation", "water surface elevation", 0, "none", "nothing"),
    (4, "step-word-5", "fifth word of the step record", 0, "none", "nothing"),
    (5, "displacement", "nodal displacement", 7, "node", "motion"),
    (6, "velocity", "nodal velocity", 7, "node", "motion"),
    (7, "acceleration", "nodal acceleration", 7, "node", "motion"),
    (8, "guide-surface", "guide surface result", 9, "guide-surface", "motion"),
    (9, "zero-gap-guide", "zero gap guide result", 6, "zero-gap-guide", "motion"),
    (10, "node-contact", "node contact result", 7, "node", "motion"),
    (11, "clashing", "clashing result", 3, "clash-pair", "motion-or-force"),
    (12, "aux-node", "auxiliary node result", 3, "aux-node", "motion"),
    (13, "reaction", "reaction at a boundary condition", 7, "boundary-node", "force"),
    (14, "guide-surface-reaction", "guide surface reaction", 4, "guide-surface", "force"),
    (15, "zero-gap-guide-reaction", "zero gap guide reaction", 4, "zero-gap-guide", "force"),
    (16, "pipe-in-pipe-reaction", "pipe-in-pipe reaction", 4, "pip-connection", "force"),
    (17, "element-force", "element force result", 14, "element", "force"),
    (18, "element-pressure", "element pressure", 2, "element", "force"),
))

_BY_NAME = {info.name: info for info in OUTPUT_TYPES}

# The subtypes that have a name, as the tool takes them.
_NAMED_SUBTYPES = {
    "resultant": ((5, 6, 7, 13), 7),
    "magnitude": ((14, 15, 16), 4),
    "temperature": ((17,), 14),
}


def _is_whole(value):
    return isinstance(value, numbers.Integral) and not isinstance(value, bool)


def whole(value, what):
    """A 32-bit whole number, or ArgumentTypeError naming `what`."""
    if not _is_whole(value):
        raise ArgumentTypeError(f"{what} must be a whole number, not {type(value).__name__} {value!r}")
    value = int(value)
    if not -2**31 <= value < 2**31:
        raise ArgumentError(f"{what} {value} does not fit in 32 bits")
    return value


def describe(number):
    """The OutputType of a number 1 to 18, or None."""
    return OUTPUT_TYPES[number - 1] if 1 <= number <= 18 else None


def output_type(output):
    """The number of an output type given by number or name ("element-force",
    "element_force" and "ELEMENT-FORCE" alike). A number outside 1 to 18 is
    passed on, for the library to refuse."""
    if isinstance(output, str):
        name = output.strip().lower().replace("_", "-")
        if name in _BY_NAME:
            return _BY_NAME[name].number
        if name.isdigit():
            return int(name)
        raise ArgumentError(f"unknown output type '{output}': give 1 to 18 or one of " + ", ".join(_BY_NAME))
    return whole(output, "the output type")


def subtype(number, value):
    """The number of a subtype of output type `number`, given by number or by
    name ("resultant", "magnitude", "temperature")."""
    if value is None:
        info = describe(number)
        if info is not None and info.max_subtype > 0:
            raise ArgumentError(f"{info.name} needs a subtype, 1 to {info.max_subtype}")
        return 1
    if isinstance(value, str):
        name = value.strip().lower()
        types, named = _NAMED_SUBTYPES.get(name, ((), 0))
        if number in types:
            return named
        if name.lstrip("+-").isdigit():
            return int(name)
        info = describe(number)
        raise ArgumentError(f"unknown subtype '{value}' of {info.name if info else number}")
    return whole(value, "the subtype")


def result_name(number, sub):
    """The name of a result for a graph or a column: "element-force 1"."""
    info = describe(number)
    if info is None:
        return str(number)
    return f"{info.name} {sub}" if info.max_subtype > 0 else info.name
