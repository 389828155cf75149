"""Every exception class, each raised by a real bad input, with the words of
the tool where the tool can be asked the same."""
import os
import subprocess
import sys

import numpy as np
import pytest

import tmrdar
from conftest import SAMPLE, cli_reason

E, V = "element-force", "value"
# (the call on the open sample job, the class, the tool's words for the same
# request or None, words the message holds)
REFUSALS = [
    (lambda j: j.value(E, 1, element=1, step=1001), tmrdar.StepError, [V, SAMPLE, E, 1, "--element", 1, "--step", 1001],
     "step 1001 is not one of the job's steps, 1 to 1000"),
    (lambda j: j.history(E, 1, element=1, first=5, last=4), tmrdar.StepError, None, "comes after the last step"),
    (lambda j: j.history(E, 1, element=1, out=np.empty(1001, np.float32)), tmrdar.StepError, None,
     "a history of 1001 steps is longer than the job's 1000 steps"),
    (lambda j: j.value("displacement", 1, node=999, step=4), tmrdar.ItemNotFoundError,
     [V, SAMPLE, "displacement", 1, "--node", 999, "--step", 4], "node 999 is not in the database"),
    (lambda j: j.value(E, 1, element=301, step=4), tmrdar.ItemNotFoundError,
     [V, SAMPLE, E, 1, "--element", 301, "--step", 4], "element 301 is not in the database"),
    (lambda j: j.value(E, 1, label="HANG-OFF", step=4), tmrdar.ItemNotFoundError,
     [V, SAMPLE, E, 1, "--label", "HANG-OFF", "--step", 4], 'label "HANG-OFF" names node 1, not an element'),
    (lambda j: j.history("reaction", 1, label="nowhere"), tmrdar.ItemNotFoundError,
     [V, SAMPLE, "reaction", 1, "--label", "nowhere", "--step", 1], 'label "nowhere" is not in the database'),
    (lambda j: j.value("reaction", 1, node=5, step=1), tmrdar.ItemNotFoundError,
     [V, SAMPLE, "reaction", 1, "--node", 5, "--step", 1], "node 5 has no boundary condition, so no reaction"),
    (lambda j: j.value("guide-surface", 1, node=2, step=1), tmrdar.ItemNotFoundError,
     [V, SAMPLE, "guide-surface", 1, "--entry", 2, "--step", 1], "guide surface 2 is not in the database (it has 1)"),
    (lambda j: j.curve(1), tmrdar.ItemNotFoundError, ["curve", SAMPLE, 1], "stress-strain curve 1 is not in"),
    (lambda j: j.node(7, "auxiliary"), tmrdar.ItemNotFoundError, None, "auxiliary node 7 is not in the database"),
    (lambda j: j.distance(0), tmrdar.ItemNotFoundError, None, "element 0 has no place along the riser"),
    (lambda j: j.value(E, 15, element=1, step=4), tmrdar.OutputError, [V, SAMPLE, E, 15, "--element", 1, "--step", 4],
     "subtype 15 of output type 17 (element-force) is not one of 1 to 14"),
    (lambda j: j.value(19, 1, node=1, step=4), tmrdar.OutputError, None,
     "output type 19 is not one of 1 to 18"),
    (lambda j: j.range_graph("time"), tmrdar.OutputError, None, "output type 1 (time) has no place along the riser"),
    (lambda j: j.value(E, 1, element=1, position=4, step=4), tmrdar.PositionError,
     [V, SAMPLE, E, 1, "--element", 1, "--position", 4, "--step", 4], "position 4 is not 1, 2 or 3"),
    (lambda j: j.distance(1, 0), tmrdar.PositionError, None, "position 0 is not 1, 2 or 3"),
    (lambda j: j.history("acceleration", 1, node=1), tmrdar.NotWrittenError,
     [V, SAMPLE, "acceleration", 1, "--node", 1, "--step", 4], "the motion database holds no nodal accelerations"),
    (lambda j: j.snapshot(E, 9, step=2), tmrdar.NotWrittenError, ["snapshot", SAMPLE, E, 9, "--step", 2],
     "the force database lacks element section 8 or 9"),
    (lambda j: j.history("tension", 1, element=1), tmrdar.ArgumentError, None, "unknown output type 'tension'"),
    (lambda j: j.history(E, "magnitude", element=1), tmrdar.ArgumentError, None, "unknown subtype 'magnitude'"),
    (lambda j: j.history(E, element=1), tmrdar.ArgumentError, None, "element-force needs a subtype, 1 to 14"),
    (lambda j: j.history(E, 1, node=1), tmrdar.ArgumentError, None, "belongs to an element: give element="),
    (lambda j: j.history(E, 1), tmrdar.ArgumentError, None, "element-force needs element=E or label=TEXT"),
    (lambda j: j.history("time", element=3), tmrdar.ArgumentError, None, "belongs to the step alone"),
    (lambda j: j.history(E, 1, element=1, out=np.empty(10)), tmrdar.ArgumentError, None, "dtype float32, not float64"),
    (lambda j: j.history(E, 1, element=1, out=np.empty(20, np.float32)[::2]), tmrdar.ArgumentError, None,
     "must be contiguous"),
    (lambda j: j.history(E, 1, element=1, out=np.empty((2, 5), np.float32)), tmrdar.ArgumentError, None,
     "one dimension, not 2"),
    (lambda j: j.node(1, kind="pipe"), tmrdar.ArgumentError, None, "neither 'structure' (0) nor 'auxiliary' (1)"),
    (lambda j: j.history(E, 1, element="1"), tmrdar.ArgumentTypeError, None, "the element must be a whole number"),
    (lambda j: j.value(E, 1, element=1, step=2.5), tmrdar.ArgumentTypeError, None, "the step must be a whole number"),
    (lambda j: j.history(E, 1, element=1, out=[0.0] * 5), tmrdar.ArgumentTypeError, None, "out must be a numpy array"),
    (lambda j: j.history(E, 1, label=7), tmrdar.ArgumentTypeError, None, "the label must be a string"),
    (lambda j: tmrdar.open(SAMPLE), tmrdar.JobStateError, None, "another job is open"),
]


@pytest.mark.parametrize("call,cls,words,message", REFUSALS)
def test_refusals(job, call, cls, words, message):
    with pytest.raises(cls) as raised:
        call(job)
    assert message in str(raised.value)
    if words is not None:
        assert str(raised.value) == cli_reason(*words)
    assert job.is_open and job.value(E, 1, element=1, step=500) == 383.0  # the job still answers


def test_request_error_names_the_arguments(job):
    with pytest.raises(tmrdar.RequestError) as raised:
        job.value(E, 15, element=1, position=7, step=4)
    assert raised.value.mask == 8 and raised.value.flags == (4,)


@pytest.mark.parametrize("name,call,cls,message", [
    ("force-only", lambda j: j.value("displacement", 1, node=1, step=2), tmrdar.OutputError,
     "output type 5 (displacement) needs the motion database, which does not exist"),
    ("V811-short", lambda j: j.value(E, 1, element=1, step=900), tmrdar.ReadError,
     "the value could not be read or computed from the database"),
])
def test_refusals_of_damaged_jobs(damaged, name, call, cls, message):
    path = str(damaged / name)
    with tmrdar.open(path) as job, pytest.raises(cls) as raised:
        call(job)
    # The tool adds the library's own words in brackets, which the exports do not give.
    assert str(raised.value) == message and cli_reason(V, path, *{
        "force-only": ["displacement", 1, "--node", 1, "--step", 2],
        "V811-short": [E, 1, "--element", 1, "--step", 900]}[name]).startswith(message)


@pytest.mark.parametrize("path,message", [
    ("/nowhere/riser", "no database files found for /nowhere/riser (looked for .dbm and .dbf)"),
    ("junk", "junk: the motion database has version code 544501614, a format this library does not read, and the "
     "force database does not exist"),
    ("", "the job path is blank"),
])
def test_no_database(damaged, path, message):
    path = str(damaged / path) if path == "junk" else path
    with pytest.raises(tmrdar.OpenError) as raised:
        tmrdar.open(path)
    assert message in str(raised.value)
    if path:
        assert str(raised.value) == cli_reason("info", path)
    with tmrdar.open(SAMPLE) as job:  # nothing is left open
        assert job.dimensions.elements == 300


def test_closed_job_and_wrong_path_type():
    job = tmrdar.open(SAMPLE)
    job.close()
    job.close()
    with pytest.raises(tmrdar.JobStateError, match="is not open"):
        job.history(E, 1, element=1)
    with pytest.raises(tmrdar.ArgumentTypeError, match="not int"):
        tmrdar.open(3)


def test_library_not_found_says_where_it_looked(tmp_path):
    script = "import tmrdar\ntry:\n    tmrdar.open('riser')\nexcept tmrdar.LibraryNotFoundError as e:\n    print(e)"
    env = dict(os.environ, TMRDAR_LIBRARY=str(tmp_path / "libtmrdar.so"), PYTHONPATH=os.path.dirname(tmrdar.__path__[0]))
    out = subprocess.run([sys.executable, "-c", script], env=env, capture_output=True, text=True, check=True).stdout
    assert f"{tmp_path / 'libtmrdar.so'} (TMRDAR_LIBRARY): no such file" in out
    assert "set TMRDAR_LIBRARY" in out
