"""A job: the two database files of one analysis, open in the library."""

import ctypes
import os
import threading
from collections import namedtuple

import numpy as np

from . import _messages
from ._library import library
from ._labels import read_label_names
from .errors import (ArgumentError, ArgumentTypeError, Error, ItemNotFoundError, JobStateError, OpenError,
                     OutputError, PositionError, ReadError, StepError, request_error_class)
from .outputs import describe, output_type, result_name, subtype as subtype_of, whole

Codes = namedtuple("Codes", "motion force motion_words force_words")
Dimensions = namedtuple("Dimensions", (
    "time_steps pip_nodes_per_pair elements nodes aux_elements aux_nodes labels boundary_conditions "
    "guide_surfaces zero_gap_guides pipe_in_pipe pip_connections clash_pairs nonlinear_e_tables"))
Details = namedtuple("Details", "detail_1 detail_2 detail_3 title")
Label = namedtuple("Label", "name node element position")
Node = namedtuple("Node", "number kind row x y z")
Element = namedtuple("Element", (
    "number kind row node_1 node_2 a8 b5 section_2 section_4 length external_fluid b1_to_b4 section_3 a6 a7 "
    "b6_to_b8 c1"))

NODE_DTYPE = np.dtype([("kind", "i4"), ("node", "i4"), ("row", "i4"), ("x", "f4"), ("y", "f4"), ("z", "f4")])
ELEMENT_DTYPE = np.dtype([("kind", "i4"), ("element", "i4"), ("row", "i4"), ("node_1", "i4"), ("node_2", "i4"),
                          ("length", "f4"), ("start", "f4"), ("middle", "f4"), ("end", "f4")])
KINDS = {"structure": 0, "auxiliary": 1}
POSITIONS = (1, 2, 3)
STEP_BAD = 256  # the mask value of a step or count refused before asking

_state = threading.Lock()
_open_job = None  # the one job this process has open


def open(path):  # noqa: A001 - the package's tmrdar.open
    """Opens the job at `path` (any extension, or none, selects the .dbm and
    .dbf files of that stem). Use it in a `with` block, or call close()."""
    return Job(path)


def _i32(value=0):
    return ctypes.c_int32(value)


class Job:
    """One open job. The library holds one job at a time in a process, so a
    second Job cannot be opened while this one is."""

    def __init__(self, path):
        global _open_job
        try:
            path = os.fspath(path)
        except TypeError:
            raise ArgumentTypeError(f"the job path must be a string or path, not {type(path).__name__}") from None
        if isinstance(path, bytes):
            path = os.fsdecode(path)
        self.path = path
        self._open = False
        lib = library()
        with _state:
            if _open_job is not None:
                raise JobStateError(f"another job is open ({_open_job.path}): the library holds one job at a time")
            motion, force, n = _i32(), _i32(), _i32(14)
            motion_words, force_words, dims = (ctypes.c_int32 * 5)(), (ctypes.c_int32 * 5)(), (ctypes.c_int32 * 14)()
            encoded = os.fsencode(path)
            result = lib.GetDatabaseInfo(ctypes.byref(motion), ctypes.byref(force), motion_words, force_words,
                                         ctypes.byref(n), dims, encoded, len(encoded))
            if result != 0:
                lib.XIT()
                raise OpenError(_messages.cannot_open(path, motion.value, force.value, result), result)
            _open_job = self
            self._open = True
        self._lib = lib
        self._motion, self._force = motion, force
        self.codes = Codes(motion.value, force.value, tuple(motion_words), tuple(force_words))
        self.dimensions = Dimensions(*dims)
        self._steps = _i32(self.dimensions.time_steps)
        self._frames_room = self._measure_frames()
        self._cache = {}

    # ----- life -----
    def close(self):
        """Closes the job. Raises ReadError when a file did not close; the job
        counts as closed all the same."""
        global _open_job
        with _state:
            if not self._open:
                return
            self._open = False
            _open_job = None
            result = self._lib.XIT()
        if result != 0:
            which = {1: "the motion database", 2: "the force database"}.get(result, "both databases")
            raise ReadError(f"closing {which} failed", result)

    def __enter__(self):
        return self

    def __exit__(self, *exc):
        self.close()

    def __del__(self):
        if getattr(self, "_open", False):
            try:
                self.close()
            except Error:
                pass

    @property
    def is_open(self):
        return self._open

    def __repr__(self):
        state = "open" if self._open else "closed"
        return f"<tmrdar.Job {self.path!r} {self.version} {state}>"

    def _check_open(self):
        if not self._open:
            raise JobStateError(f"the job {self.path} is not open" if self.path else "the job is not open")

    def _measure_frames(self):
        # No history can have more steps than the larger file has records.
        room = -1
        stem = os.path.splitext(self.path)[0]
        for code, extension in ((self.codes.motion, ".dbm"), (self.codes.force, ".dbf")):
            if code > 0:
                try:
                    room = max(room, os.path.getsize(stem + extension) // 32)
                except OSError:
                    pass
        return room

    # ----- what the job is -----
    @property
    def version(self):
        """The format of the files: "V861", "V841" ... "V811"."""
        code = self.codes.motion if self.codes.motion > 0 else self.codes.force
        return _messages.FORMATS.get(code, f"version code {code}")

    @property
    def details(self):
        self._check_open()
        d1, d2, d3 = _i32(), _i32(), ctypes.c_float()
        title = ctypes.create_string_buffer(b" " * 1024, 1024)
        result = self._lib.GetAnalysisDetails(ctypes.byref(d1), ctypes.byref(d2), ctypes.byref(d3), title, 1024)
        text = title.raw.decode("latin-1").rstrip(" \0") if result == 0 else ""
        return Details(d1.value, d2.value, d3.value, text)

    @property
    def title(self):
        return self.details.title

    @property
    def times(self):
        """The time of every step, a float32 array."""
        return self.history("time")

    @property
    def steps(self):
        return np.arange(1, self.dimensions.time_steps + 1, dtype=np.int32)

    # ----- the model -----
    def node(self, number, kind="structure"):
        """A node's number, kind, row and coordinates."""
        self._check_open()
        number, kind_number = whole(number, "the node number"), self._kind(kind)
        xyz = (ctypes.c_float * 3)()
        n, k = _i32(number), _i32(kind_number)
        row = self._lib.GetNodeProperties(ctypes.byref(self._motion), ctypes.byref(self._force), ctypes.byref(n),
                                          ctypes.byref(k), xyz)
        if row > 0:
            return Node(number, kind_number, row, *xyz)
        if row == -1:
            raise Error(_messages.NO_FORMAT, row)
        raise ItemNotFoundError(f"{'auxiliary node' if kind_number else 'node'} {number} is not in the database", row)

    def has_node(self, number, kind="structure"):
        try:
            self.node(number, kind)
        except ItemNotFoundError:
            return False
        return True

    def element(self, number, kind="structure"):
        """All the stored properties of an element."""
        self._check_open()
        number, kind_number = whole(number, "the element number"), self._kind(kind)
        ints, reals = (ctypes.c_int32 * 15)(), (ctypes.c_float * 15)()
        n, k, length = _i32(number), _i32(kind_number), _i32(15)
        result = self._lib.GetElementProperties(ctypes.byref(self._motion), ctypes.byref(self._force),
                                                ctypes.byref(n), ctypes.byref(k), ctypes.byref(length), ints, reals)
        if result == -2:
            raise Error(_messages.NO_FORMAT, result)
        if result == -1:
            auxiliary = kind_number == 1 or number < 0
            shown = -number if kind_number == 0 and number < 0 else number
            raise ItemNotFoundError(f"{'auxiliary element' if auxiliary else 'element'} {shown} is not in the database",
                                    result)
        if result != 0:
            raise ReadError(f"the element properties need {result} slots", result)
        if kind_number == 0 and number < 0:
            number, kind_number = -number, 1
        if kind_number == 1:
            return Element(number, 1, ints[0], ints[1], ints[2], ints[3], -1, -1, -1, -1.0, (-1.0,) * 3, (-1.0,) * 4,
                           -1.0, -1.0, -1.0, (-1.0,) * 3, -1.0)
        return Element(number, 0, ints[0], ints[1], ints[2], ints[3], ints[4], ints[5], ints[6], reals[0],
                       tuple(reals[1:4]), tuple(reals[4:8]), reals[8], reals[9], reals[10], tuple(reals[11:14]),
                       reals[14])

    def distance(self, element, position=1):
        """How far along the riser the start (1), middle (2) or end (3) of an
        element of the structure lies."""
        self._check_open()
        e, p, out = _i32(whole(element, "the element number")), _i32(whole(position, "the position")), ctypes.c_float()
        result = self._lib.GetDistanceAlongRiser(ctypes.byref(self._motion), ctypes.byref(self._force),
                                                 ctypes.byref(e), ctypes.byref(p), ctypes.byref(out))
        if result == 0:
            return out.value
        if result == -2:
            raise PositionError(f"position {p.value} is not 1, 2 or 3 (start, middle or end of the element)", result)
        if result == -3:
            raise Error(_messages.NO_FORMAT, result)
        if e.value < 1:
            raise ItemNotFoundError(f"element {e.value} has no place along the riser: only elements of the "
                                    "structure, numbered from 1, have one", result)
        raise ItemNotFoundError(f"element {e.value} is not in the database", result)

    @staticmethod
    def _kind(kind):
        if isinstance(kind, str) and kind in KINDS:
            return KINDS[kind]
        if not isinstance(kind, str) and whole(kind, "the kind") in (0, 1):
            return int(kind)
        raise ArgumentError(f"kind {kind!r} is neither 'structure' (0) nor 'auxiliary' (1)")

    def _element_rows(self, kind, max_number=1_000_000):
        key = ("elements", kind)
        if key not in self._cache:
            rows = self.dimensions.aux_elements if kind else self.dimensions.elements
            by_row, number = {}, 1
            while len(by_row) < rows and number <= max_number:
                try:
                    e = self.element(number, kind)
                except ItemNotFoundError:
                    e = None
                if e is not None and 1 <= e.row <= rows:
                    by_row.setdefault(e.row, e)
                number += 1
            self._cache[key] = [by_row[r] for r in sorted(by_row)]
        return self._cache[key]

    def _node_rows(self, kind, max_number=1_000_000):
        key = ("nodes", kind)
        if key not in self._cache:
            rows = self.dimensions.aux_nodes if kind else self.dimensions.nodes
            by_row = {}

            def ask(number):
                try:
                    n = self.node(number, kind)
                except ItemNotFoundError:
                    return
                if 1 <= n.row <= rows:
                    by_row.setdefault(n.row, n)

            if kind == 0:
                for e in self._element_rows(0, max_number):
                    for end in (e.node_1, e.node_2):
                        if len(by_row) < rows and end >= 0:
                            ask(end)
            number = 0
            while len(by_row) < rows and number <= max_number:
                ask(number)
                number += 1
            self._cache[key] = [by_row[r] for r in sorted(by_row)]
        return self._cache[key]

    @property
    def nodes(self):
        """The nodes in row order, structure then auxiliary, as a numpy
        structured array (kind 0 structure, 1 auxiliary; node; row; x, y, z):
        pandas.DataFrame(job.nodes) makes a frame of it."""
        self._check_open()
        rows = [(n.kind, n.number, n.row, n.x, n.y, n.z) for kind in (0, 1) for n in self._node_rows(kind)]
        return np.array(rows, dtype=NODE_DTYPE)

    @property
    def elements(self):
        """The elements in row order, structure then auxiliary: kind, number,
        row, end nodes (-1 for none), length and the distance along the riser
        of the start, middle and end (NaN for auxiliary elements, which have
        none)."""
        self._check_open()
        rows = []
        for kind in (0, 1):
            for e in self._element_rows(kind):
                places = [self.distance(e.number, p) for p in POSITIONS] if kind == 0 else [np.nan] * 3
                rows.append((kind, e.number, e.row, e.node_1, e.node_2, e.length if kind == 0 else np.nan, *places))
        return np.array(rows, dtype=ELEMENT_DTYPE)

    @property
    def labels(self):
        """The labels of the job, each with the node, or the element and
        position, that the library resolves it to."""
        self._check_open()
        if "labels" not in self._cache:
            names = read_label_names(self.path, self.codes, self.dimensions.labels, self._resolve_label)
            self._cache["labels"] = [Label(name, *self._resolve_label(name)) for name in names]
        return list(self._cache["labels"])

    def _resolve_label(self, name):
        """(node, element, position) that the library finds for a label, or
        None when it is not a label of the job."""
        encoded = name.encode("latin-1")
        args = [_i32(5), _i32(99), _i32(0), _i32(0), _i32(1), _i32(max(self.dimensions.time_steps, 1)), _i32(0)]
        value = ctypes.c_float()
        mask = self._lib.GetRequestedSingleValue(ctypes.byref(self._motion), ctypes.byref(self._force),
                                                 *map(ctypes.byref, args), ctypes.byref(value), encoded, len(encoded))
        if mask & 1024 or (args[2].value < 1 and args[3].value < 1):
            return None
        node, element = args[2].value, args[3].value
        return (node, 0, 0) if node > 0 else (0, element, args[4].value)

    def curve(self, id):  # noqa: A002 - the curve's id, as the library names it
        """The points of stress-strain curve `id`: an (n, 2) float32 array of
        the two values of each point in stored order."""
        self._check_open()
        table = _i32(whole(id, "the curve id"))
        none = _i32(0)
        args = (ctypes.byref(self._motion), ctypes.byref(self._force), ctypes.byref(table))
        count = self._lib.GetProcessedDirectStressStrainData(*args, ctypes.byref(none), None)
        if count < 0 or (count == 0 and table.value == 0):
            raise ItemNotFoundError(f"stress-strain curve {table.value} is not in the database", count)
        if count > self.dimensions.nonlinear_e_tables:
            raise ReadError(f"stress-strain curve {table.value} claims {count} points, but the table has only "
                            f"{self.dimensions.nonlinear_e_tables} rows", count)
        pairs = np.zeros((count, 2), dtype=np.float32)
        if count:
            result = self._lib.GetProcessedDirectStressStrainData(*args, ctypes.byref(_i32(count)),
                                                                  pairs.ctypes.data_as(ctypes.POINTER(ctypes.c_float)))
            if result != 0:
                raise ReadError(f"stress-strain curve {table.value} could not be read whole", result)
        return pairs

    # ----- results -----
    def _request(self, output, subtype, node, element, position, label):
        """The request's arguments: (type, subtype, node, element, position,
        label), checked as the tool checks its command line."""
        number = output_type(output)
        sub = subtype_of(number, subtype)
        info = describe(number)
        if label is not None and not isinstance(label, str):
            raise ArgumentTypeError(f"the label must be a string, not {type(label).__name__}")
        node = None if node is None else whole(node, "the node")
        element = None if element is None else whole(element, "the element")
        position = 1 if position is None else whole(position, "the position")
        if info is None:
            return (number, sub, node or 0, element or 0, position, label or "")
        name = info.name
        if info.item == "none":
            if node is not None or element is not None or label is not None:
                raise ArgumentError(f"{name} belongs to the step alone: it takes no node, element or label")
            return (number, sub, 0, 0, position, "")
        of_element = info.item == "element"
        if of_element and node is not None:
            raise ArgumentError(f"{name} belongs to an element: give element=, not node=")
        if not of_element and element is not None:
            raise ArgumentError(f"{name} belongs to a node or entry: give node=, not element=")
        numbered = element is not None if of_element else node is not None
        if numbered and label is not None:
            raise ArgumentError("give either a number or a label, not both")
        if not numbered and label is None:
            raise ArgumentError(f"{name} needs {'element=E' if of_element else 'node=N'} or label=TEXT")
        if label is not None and not label.strip():
            raise ArgumentError("the label is blank")
        return (number, sub, node or 0, element or 0, position, label or "")

    def _fail(self, asked, resolved, mask, step, history):
        flags = (ctypes.c_int32 * 32)()
        self._lib.GetRequestedHistoryError(ctypes.byref(_i32(mask)), ctypes.byref(_i32(32)), flags)
        message = _messages.request_failure(self, asked, resolved, mask, step, history)
        raise request_error_class(mask)(message, mask, [i + 1 for i, f in enumerate(flags) if f])

    def _call(self, function, asked, count_or_step, target, history):
        """Calls GetRequestedSingleValue or GetRequestedHistory; raises on a
        refusal. `target` is the address the library writes to."""
        output, sub, node, element, position, label = asked
        args = [_i32(output), _i32(sub), _i32(node), _i32(element), _i32(position)]
        encoded = label.encode("latin-1")
        mask = function(ctypes.byref(self._motion), ctypes.byref(self._force), *map(ctypes.byref, args),
                        ctypes.byref(self._steps), ctypes.byref(_i32(count_or_step)), target, encoded, len(encoded))
        if mask > 0:
            resolved = (output, sub, args[2].value, args[3].value, args[4].value, label)
            self._fail(asked, resolved, mask, count_or_step, history)

    def _check_steps(self, first, last):
        steps = self.dimensions.time_steps
        if steps < 1:
            raise StepError("the job has no time steps", STEP_BAD)
        for step in (first, last):
            if not 1 <= step <= steps:
                raise StepError(_messages.bad_step(step, steps), STEP_BAD)
        if first > last:
            raise StepError(f"the first step {first} comes after the last step {last}", STEP_BAD)
        if 0 <= self._frames_room < last:
            raise StepError(f"step {last} cannot be read: the job's files have room for no more than "
                            f"{self._frames_room} frames, though its header counts {steps} steps", STEP_BAD)

    def _steps_of(self, first, last):
        first = 1 if first is None else whole(first, "the first step")
        last = self.dimensions.time_steps if last is None else whole(last, "the last step")
        self._check_steps(first, last)
        return first, last

    def _read_into(self, asked, buffer):
        """Steps 1 to len(buffer) of a request into a float32 buffer."""
        self._call(self._lib.GetRequestedHistory, asked, len(buffer), buffer.ctypes.data, True)

    def value(self, output, subtype=None, *, step, node=None, element=None, position=None, label=None):
        """One result at one step, as a float."""
        self._check_open()
        asked = self._request(output, subtype, node, element, position, label)
        step = whole(step, "the step")
        if not 1 <= step <= self.dimensions.time_steps:
            raise StepError(_messages.bad_step(step, self.dimensions.time_steps), STEP_BAD)
        value = ctypes.c_float()
        self._call(self._lib.GetRequestedSingleValue, asked, step, ctypes.byref(value), False)
        return value.value

    def history(self, output, subtype=None, *, node=None, element=None, position=None, label=None, first=None,
                last=None, out=None):
        """The result at steps `first` to `last` (the whole run unless given)
        as a float32 array that the library fills. With `out`, a float32
        array of one dimension, the steps 1 to len(out) are written into it
        and it is returned."""
        self._check_open()
        asked = self._request(output, subtype, node, element, position, label)
        if out is not None:
            if first is not None or last is not None:
                raise ArgumentError("out= takes steps 1 to len(out): give no first= or last= with it")
            _check_buffer(out)
            count = len(out)
            steps = self.dimensions.time_steps
            if count > max(steps, 0):
                raise StepError(_messages.bad_count(count, steps), STEP_BAD)
            self._read_into(asked, out)
            return out
        first, last = self._steps_of(first, last)
        values = np.empty(last, dtype=np.float32)
        self._read_into(asked, values)
        return values[first - 1:] if first > 1 else values

    def statistics(self, output, subtype=None, *, node=None, element=None, position=None, label=None, first=None,
                   last=None):
        """Minimum and maximum with their steps, mean and standard deviation
        of one result over steps `first` to `last`, as a dict."""
        first = 1 if first is None else first
        values = self.history(output, subtype, node=node, element=element, position=position, label=label,
                              first=first, last=last)
        stats = {name: column[0].item() for name, column in _statistics(values[None, :], first).items()}
        return {"first_step": first, "last_step": first + len(values) - 1, **stats}

    def riser_points(self, output):
        """The places along the riser that results of `output` belong to,
        as (node, element, position, distance) rows in the elements' row
        order: the start, middle and end of each element for a result of an
        element, each node an element's end names (first time named) for a
        result of a node."""
        self._check_open()
        number = output_type(output)
        info = describe(number)
        if info is None or info.item not in ("node", "element"):
            raise OutputError(_messages.type_name(number) + " has no place along the riser: only results of a "
                              "node or an element have one")
        points, named = [], set()
        for e in self._element_rows(0):
            if info.item == "element":
                points.extend((0, e.number, p, self.distance(e.number, p)) for p in POSITIONS)
                continue
            for end, place in ((e.node_1, 1), (e.node_2, 3)):
                if end >= 1 and end not in named:
                    named.add(end)
                    points.append((end, 0, 0, self.distance(e.number, place)))
        return points

    def _points(self, output, items, positions):
        """The points of a snapshot or range graph: along the riser, or at
        the given items (element numbers, or node and entry numbers)."""
        number = output_type(output)
        info = describe(number)
        if items is None:
            points = self.riser_points(number)
            if info.item == "element" and positions is not None:
                wanted = {whole(p, "a position") for p in positions}
                points = [p for p in points if p[2] in wanted]
            return info, points
        if info is None or info.item == "none":
            raise OutputError(_messages.type_name(number) + " belongs to the step alone: it has no items")
        if isinstance(items, (str, bytes)) or not hasattr(items, "__iter__"):
            raise ArgumentTypeError(f"the items must be a sequence of numbers, not {type(items).__name__}")
        items = [whole(i, "an item") for i in items]
        if info.item == "element":
            places = [whole(p, "a position") for p in (POSITIONS if positions is None else positions)]
            return info, [(0, e, p, np.nan) for e in items for p in places]
        return info, [(n, 0, 0, np.nan) for n in items]

    def _fill_distances(self, info, points):
        if info.item not in ("node", "element"):
            return points
        known = {(p[0], p[1], p[2]): p[3] for p in self.riser_points(info.number)}
        return [(n, e, p, known.get((n, e, p), np.nan) if np.isnan(d) else d) for n, e, p, d in points]

    def snapshot(self, output, subtype=None, step=None, *, items=None, positions=None):
        """The result at one step at each place along the riser, or at each
        of `items` (element numbers, with `positions`, or node or entry
        numbers): a pandas DataFrame with the item, its distance along the
        riser and the value."""
        pd = _pandas()
        self._check_open()
        if step is None:
            raise ArgumentError("snapshot needs step=")
        step = whole(step, "the step")
        if not 1 <= step <= self.dimensions.time_steps:
            raise StepError(_messages.bad_step(step, self.dimensions.time_steps), STEP_BAD)
        number = output_type(output)
        sub = subtype_of(number, subtype)
        info, points = self._points(number, items, positions)
        points = self._fill_distances(info, points) if items is not None else points
        values = np.empty(len(points), dtype=np.float32)
        value = ctypes.c_float()
        for i, (node, element, position, _) in enumerate(points):
            self._call(self._lib.GetRequestedSingleValue, (number, sub, node, element, position or 1, ""), step,
                       ctypes.byref(value), False)
            values[i] = value.value
        frame = _point_frame(pd, info, points)
        frame["value"] = values
        return frame

    def histories(self, output, subtype=None, *, items=None, positions=None, first=None, last=None):
        """The histories of one result at many places (as `snapshot` takes
        them): the places, and a float32 array of (place, step) over steps
        `first` to `last`, one history read a place."""
        self._check_open()
        number = output_type(output)
        sub = subtype_of(number, subtype)
        first, last = self._steps_of(first, last)
        info, points = self._points(number, items, positions)
        values = np.empty((len(points), last), dtype=np.float32)
        for i, (node, element, position, _) in enumerate(points):
            self._read_into((number, sub, node, element, position or 1, ""), values[i])
        return info, points, values[:, first - 1:]

    def range_graph(self, output, subtype=None, *, elements=None, positions=None, items=None, first=None,
                    last=None):
        """The range graph of a result along the riser over steps `first` to
        `last` (the whole run unless given): a pandas DataFrame with a row
        for each place (each element and position, or each node), its
        distance along the riser, and the minimum and maximum with their
        steps, the mean and the standard deviation over the steps."""
        pd = _pandas()
        if elements is not None and items is not None:
            raise ArgumentError("give elements= or items=, not both")
        items = elements if elements is not None else items
        first = 1 if first is None else first
        info, points, values = self.histories(output, subtype, items=items, positions=positions, first=first,
                                              last=last)
        points = self._fill_distances(info, points) if items is not None else points
        frame = _point_frame(pd, info, points)
        for name, column in _statistics(values, first).items():
            frame[name] = column
        return frame

    def to_xarray(self, outputs, *, elements=None, nodes=None, positions=None, first=None, last=None):
        """A labelled xarray.Dataset of several results along the riser over
        steps `first` to `last`. `outputs` is a list of (output, subtype)
        pairs or "name subtype" strings; a result of an element becomes a
        variable over (time, element, position), one of a node over (time,
        node). Coordinates: time, step, element, position, node, and the
        distance along the riser of each place."""
        xr = _optional("xarray", "to_xarray")
        self._check_open()
        first, last = self._steps_of(first, last)
        times = self.history("time", first=first, last=last)
        coords = {"time": ("time", times), "step": ("time", np.arange(first, last + 1, dtype=np.int32))}
        variables = {}
        for entry in ([outputs] if isinstance(outputs, (str, tuple)) else outputs):
            output, sub = _split_output(entry)
            number = output_type(output)
            sub = subtype_of(number, sub)
            name = result_name(number, sub).replace(" ", "_").replace("-", "_")
            items = elements if describe(number) and describe(number).item == "element" else nodes
            info, points, values = self.histories(number, sub, items=items, positions=positions, first=first,
                                                  last=last)
            points = self._fill_distances(info, points) if items is not None else points
            if info.item == "element":
                numbers = sorted({p[1] for p in points}, key=[p[1] for p in points].index)
                places = sorted({p[2] for p in points})
                grid = np.full((last - first + 1, len(numbers), len(places)), np.nan, dtype=np.float32)
                distance = np.full((len(numbers), len(places)), np.nan, dtype=np.float32)
                for row, (_, e, p, d) in enumerate(points):
                    grid[:, numbers.index(e), places.index(p)] = values[row]
                    distance[numbers.index(e), places.index(p)] = d
                coords["element"] = ("element", np.array(numbers, dtype=np.int32))
                coords["position"] = ("position", np.array(places, dtype=np.int32))
                coords["element_distance"] = (("element", "position"), distance)
                variables[name] = (("time", "element", "position"), grid)
            else:
                coords["node"] = ("node", np.array([p[0] for p in points], dtype=np.int32))
                if info.item == "node":
                    coords["node_distance"] = ("node", np.array([p[3] for p in points], dtype=np.float32))
                variables[name] = (("time", "node"), values.T.copy())
            variables[name] += ({"output_type": number, "subtype": sub, "long_name": result_name(number, sub)},)
        return xr.Dataset(variables, coords=coords, attrs={"job": self.path, "title": self.title,
                                                           "format": self.version})

    # ----- plots -----
    def plot_history(self, output, subtype=None, *, units=None, ax=None, **item):
        """A matplotlib figure of one result against time (see history for
        the item and steps)."""
        from .plots import plot_history
        return plot_history(self, output, subtype, units=units, ax=ax, **item)

    def plot_range_graph(self, output, subtype=None, *, units=None, ax=None, **places):
        """A matplotlib figure of the range graph: minimum, maximum and mean
        against the distance along the riser."""
        from .plots import plot_range_graph
        return plot_range_graph(self, output, subtype, units=units, ax=ax, **places)


def _check_buffer(out):
    if not isinstance(out, np.ndarray):
        raise ArgumentTypeError(f"out must be a numpy array, not {type(out).__name__}")
    if out.dtype != np.float32:
        raise ArgumentError(f"out must be of dtype float32, not {out.dtype}")
    if out.ndim != 1:
        raise ArgumentError(f"out must have one dimension, not {out.ndim}")
    if not out.flags.c_contiguous:
        raise ArgumentError("out must be contiguous: the library writes the steps one after the other")
    if not out.flags.writeable:
        raise ArgumentError("out is read-only")
    if len(out) < 1:
        raise ArgumentError("out is empty: it must have room for one step or more")


def _statistics(values, first):
    """Statistics of each row of a (place, step) float32 array, as the C++
    interface forms them: extremes as stored with the first step of each,
    mean and population standard deviation in double precision."""
    wide = values.astype(np.float64)
    mean = wide.mean(axis=1)
    deviation = np.sqrt(((wide - mean[:, None]) ** 2).mean(axis=1))
    lowest, highest = values.argmin(axis=1), values.argmax(axis=1)
    rows = np.arange(values.shape[0])
    stats = {"minimum": values[rows, lowest], "minimum_step": (lowest + first).astype(np.int32),
             "maximum": values[rows, highest], "maximum_step": (highest + first).astype(np.int32),
             "mean": mean, "standard_deviation": deviation}
    return stats


def _point_frame(pd, info, points):
    if info.item == "element":
        columns = {"element": [p[1] for p in points], "position": [p[2] for p in points]}
    else:
        columns = {"node" if info.item in ("node", "boundary-node", "aux-node") else "entry": [p[0] for p in points]}
    frame = pd.DataFrame({k: np.array(v, dtype=np.int32) for k, v in columns.items()})
    if info.item in ("node", "element"):
        frame["distance"] = np.array([p[3] for p in points], dtype=np.float32)
    return frame


def _split_output(entry):
    if isinstance(entry, str):
        words = entry.split()
        if len(words) == 2:
            return words[0], words[1]
        return entry, None
    if isinstance(entry, tuple) and len(entry) == 2:
        return entry
    raise ArgumentTypeError(f"an output must be 'name subtype' or (output, subtype), not {entry!r}")


def _optional(module, what):
    import importlib
    try:
        return importlib.import_module(module)
    except ImportError:
        raise ImportError(f"{what} needs {module}: install the Debian package python3-{module}") from None


def _pandas():
    return _optional("pandas", "this result table")
