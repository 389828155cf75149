"""Graphs of a job's results with matplotlib, drawn on a Figure of their own
(no window is needed: savefig writes PNG, SVG or PDF)."""

from .outputs import describe, output_type, result_name, subtype as subtype_of


def _figure(ax):
    try:
        from matplotlib.figure import Figure
    except ImportError:
        raise ImportError("the plots need matplotlib: install the Debian package python3-matplotlib") from None
    if ax is not None:
        return ax.figure, ax
    figure = Figure(figsize=(8, 4.5), layout="constrained")
    return figure, figure.add_subplot()


def _axis_label(number, sub, units):
    info = describe(number)
    text = result_name(number, sub) + (f" ({info.meaning})" if info else "")
    return text + (f" [{units}]" if units else "")


def _item_words(item):
    if item.get("label"):
        return f" at {item['label']}"
    if item.get("element") is not None:
        return f" of element {item['element']} at position {item.get('position') or 1}"
    if item.get("node") is not None:
        return f" of node {item['node']}"
    return ""


def plot_history(job, output, subtype=None, *, units=None, ax=None, **item):
    """One result against the time of the steps; `item` as job.history takes
    it (node=, element=, position=, label=, first=, last=)."""
    number = output_type(output)
    sub = subtype_of(number, subtype)
    values = job.history(number, sub, **item)
    steps = {k: item[k] for k in ("first", "last") if k in item}
    times = job.history("time", **steps)
    figure, ax = _figure(ax)
    ax.plot(times, values, color="#1f77b4", linewidth=1.0, label=result_name(number, sub))
    ax.set_xlabel("time [s]")
    ax.set_ylabel(_axis_label(number, sub, units))
    ax.set_title(f"{result_name(number, sub)}{_item_words(item)}\n{job.title or job.path}", fontsize=10)
    ax.grid(True, alpha=0.3)
    return figure


def plot_range_graph(job, output, subtype=None, *, units=None, ax=None, length_units=None, **places):
    """The minimum, maximum and mean of a result over the run against the
    distance along the riser; `places` as job.range_graph takes them."""
    number = output_type(output)
    sub = subtype_of(number, subtype)
    graph = job.range_graph(number, sub, **places)
    figure, ax = _figure(ax)
    for column, colour in (("maximum", "#d62728"), ("mean", "#2ca02c"), ("minimum", "#1f77b4")):
        ax.plot(graph["distance"], graph[column], color=colour, linewidth=1.2, label=column)
    ax.fill_between(graph["distance"], graph["minimum"], graph["maximum"], color="#999999", alpha=0.15)
    ax.set_xlabel("distance along the riser from the first element" + (f" [{length_units}]" if length_units else ""))
    ax.set_ylabel(_axis_label(number, sub, units))
    first, last = places.get("first") or 1, places.get("last") or job.dimensions.time_steps
    ax.set_title(f"range graph of {result_name(number, sub)}, steps {first} to {last}\n{job.title or job.path}",
                 fontsize=10)
    ax.legend()
    ax.grid(True, alpha=0.3)
    return figure
