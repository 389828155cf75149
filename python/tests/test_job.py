"""The package's answers against the tool's, which stands on the C++
interface, for the same requests on the sample job."""
import numpy as np
import pytest

import tmrdar
from conftest import SAMPLE, cli_table

# (tool words, the same request in Python)
REQUESTS = [
    (["element-force", "1", "--element", "1"], ("element-force", 1), {"element": 1}),
    (["element-force", "1", "--element", "300", "--position", "3"], (17, 1), {"element": 300, "position": 3}),
    (["element-force", "2", "--element", "150", "--position", "2"], ("element_force", "2"), {"element": 150,
                                                                                            "position": 2}),
    (["element-force", "1", "--label", "stiffener tip"], ("element-force", 1), {"label": "stiffener tip"}),
    (["displacement", "1", "--label", "HANG-OFF"], ("displacement", 1), {"label": "HANG-OFF"}),
    (["displacement", "resultant", "--node", "12"], ("displacement", "resultant"), {"node": 12}),
    (["reaction", "1", "--label", "hang-off"], ("reaction", 1), {"label": "hang-off"}),
    (["guide-surface-reaction", "magnitude", "--entry", "1"], ("guide-surface-reaction", "magnitude"), {"node": 1}),
    (["velocity", "3", "--node", "40"], ("VELOCITY", 3), {"node": 40}),
    (["surface-elevation"], ("surface-elevation", None), {}),
    (["time"], (1, None), {}),
]


@pytest.mark.parametrize("words,output,item", REQUESTS)
def test_history_and_value_are_the_tools(job, words, output, item):
    table = cli_table("history", SAMPLE, *words)
    expected = table["value"].astype(np.float32).to_numpy()
    values = job.history(*output, **item)
    assert values.dtype == np.float32 and values.shape == (1000,)
    np.testing.assert_array_equal(values, expected)
    buffer = np.full(10, np.nan, dtype=np.float32)
    assert job.history(*output, **item, out=buffer) is buffer
    np.testing.assert_array_equal(buffer, expected[:10])
    np.testing.assert_array_equal(job.history(*output, **item, first=400, last=410), expected[399:410])
    assert np.float32(job.value(*output, **item, step=777)) == expected[776]


@pytest.mark.parametrize("command,words,call", [
    ("range", ["element-force", "1", "--from", "500"], lambda j: j.range_graph("element-force", 1, first=500)),
    ("range", ["displacement", "3", "--to", "250"], lambda j: j.range_graph("displacement", 3, last=250)),
    ("snapshot", ["element-force", "2", "--step", "400"], lambda j: j.snapshot("element-force", 2, step=400)),
    ("snapshot", ["velocity", "1", "--step", "3"], lambda j: j.snapshot("velocity", 1, step=3)),
    ("stats", ["element-force", "1", "--element", "1", "--from", "200"],
     lambda j: __import__("pandas").DataFrame([j.statistics("element-force", 1, element=1, first=200)])),
])
def test_tables_along_the_riser_are_the_tools(job, command, words, call):
    expected = cli_table(command, SAMPLE, *words)
    frame = call(job)
    assert list(frame.columns) == [c.replace("-", "_") for c in expected.columns]
    for column in expected.columns:
        ours, theirs = frame[column.replace("-", "_")].to_numpy(), expected[column]
        if column in ("mean", "standard-deviation"):  # double sums, in another order
            np.testing.assert_allclose(ours, theirs.astype(float), rtol=1e-12)
        elif ours.dtype.kind == "f":
            np.testing.assert_array_equal(ours, theirs.astype(np.float32))
        else:
            np.testing.assert_array_equal(ours, theirs.astype(int))


def test_range_graph_of_given_elements_is_those_rows_of_the_whole(job):
    whole = job.range_graph("element-force", 1)
    part = job.range_graph("element-force", 1, elements=[300, 2], positions=[2])
    assert list(part["element"]) == [300, 2] and list(part["position"]) == [2, 2]
    for _, row in part.iterrows():
        match = whole[(whole.element == row.element) & (whole.position == 2)].iloc[0]
        assert (row.distance, row.minimum, row.maximum_step) == (match.distance, match.minimum, match.maximum_step)


def test_model_is_the_tools(job):
    nodes, elements = cli_table("nodes", SAMPLE), cli_table("elements", SAMPLE)
    for column in ("node", "row"):
        np.testing.assert_array_equal(job.nodes[column], nodes[column].astype(int))
    for column in ("x", "y", "z"):
        np.testing.assert_array_equal(job.nodes[column], nodes[column].astype(np.float32))
    ours = job.elements
    for mine, theirs, kind in (("element", "element", int), ("node_1", "node-1", int), ("node_2", "node-2", int),
                               ("length", "length", np.float32), ("start", "start", np.float32),
                               ("end", "end", np.float32)):
        np.testing.assert_array_equal(ours[mine], elements[theirs].astype(kind))
    assert ours["middle"][0] == job.distance(1, 2) and 0 < ours["middle"][0] < ours["end"][0]


def test_what_the_job_is(job):
    info = dict(cli_table("info", SAMPLE).to_numpy())
    assert job.version == info["format"] == "V861"
    assert job.title == info["title"]
    dims = job.dimensions
    assert (dims.time_steps, dims.elements, dims.nodes, dims.labels) == (1000, 300, 301, 3)
    assert [job.details.detail_1, job.details.detail_2] == [int(info["analysis detail 1"]),
                                                           int(info["analysis detail 2"])]
    times = job.times
    assert [times[0], times[-1]] == [np.float32(t) for t in info["time range"].split(" to ")]


@pytest.mark.parametrize("name", ["V861", "V841", "V831", "V821", "V815", "V811"])
def test_every_format_answers_alike(formats, name):
    with tmrdar.open(formats[name]) as job:
        assert job.version == name
        assert job.labels == [("HANG-OFF", 1, 0, 0), ("TOUCHDOWN", 301, 0, 0), ("STIFFENER TIP", 0, 7, 3)]
        tension = job.history("element-force", 1, element=150, position=2)
        heave = job.history("displacement", 1, label="TOUCHDOWN")
    with tmrdar.open(SAMPLE) as job:
        np.testing.assert_array_equal(tension, job.history("element-force", 1, element=150, position=2))
        np.testing.assert_array_equal(heave, job.history("displacement", 1, node=301))


def test_xarray_holds_the_histories(job):
    data = job.to_xarray(["element-force 1", ("displacement", 3)], elements=[1, 150], nodes=[1, 301], first=11,
                         last=20)
    tension, heave = data["element_force_1"], data["displacement_3"]
    assert tension.dims == ("time", "element", "position") and heave.dims == ("time", "node")
    assert list(data["step"]) == list(range(11, 21)) and float(data["time"][0]) == pytest.approx(1.1)
    np.testing.assert_array_equal(tension.sel(element=150, position=3),
                                  job.history("element-force", 1, element=150, position=3, first=11, last=20))
    np.testing.assert_array_equal(heave.sel(node=301), job.history("displacement", 3, node=301, first=11, last=20))
    assert float(data["element_distance"].sel(element=150, position=1)) == job.distance(150, 1)


@pytest.mark.parametrize("draw,xlabel,ylabel", [
    (lambda j: j.plot_history("displacement", 1, label="HANG-OFF", last=200, units="m"), "time [s]",
     "displacement 1 (nodal displacement) [m]"),
    (lambda j: j.plot_range_graph("element-force", 1, units="kN"), "distance along the riser from the first element",
     "element-force 1 (element force result) [kN]"),
])
def test_plots_are_drawn_to_files(job, tmp_path, draw, xlabel, ylabel):
    figure = draw(job)
    axes = figure.axes[0]
    assert (axes.get_xlabel(), axes.get_ylabel()) == (xlabel, ylabel)
    assert len(axes.lines) in (1, 3) and len(axes.lines[0].get_xdata()) in (200, 900)
    figure.savefig(tmp_path / "graph.png")
    assert (tmp_path / "graph.png").read_bytes()[:8] == b"\x89PNG\r\n\x1a\n"
