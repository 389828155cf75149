"""The reasons of a failure in words, the same words as the C++ interface
and the tmrdar tool."""

from .outputs import describe

FORMATS = {13: "V861", 11: "V841", 10: "V831", 7: "V821", 4: "V815", 3: "V811"}
NO_FORMAT = "the version codes select no database format"

_ITEM_WORDS = {"guide-surface": "guide surface", "zero-gap-guide": "zero gap guide", "clash-pair": "clash pair",
               "aux-node": "auxiliary node", "pip-connection": "pipe-in-pipe connection"}
_COUNTED = {"guide-surface": "guide_surfaces", "zero-gap-guide": "zero_gap_guides", "clash-pair": "clash_pairs",
            "pip-connection": "pip_connections"}


def type_name(number):
    info = describe(number)
    return f"output type {number}" + (f" ({info.name})" if info else "")


def item_words(item, number):
    if item == "element":
        return f"auxiliary element {-number}" if number < 0 else f"element {number}"
    return f"{_ITEM_WORDS.get(item, 'node')} {number}"


def _file_state(which, code):
    text = f"the {which} database"
    if code == 0:
        return text + " does not exist"
    if code < 0:
        return text + " cannot be read"
    name = FORMATS.get(code)
    return text + f" has version code {code}" + (f" ({name})" if name else ", a format this library does not read")


def cannot_open(path, motion, force, result):
    if result == -1:
        return "the job path is blank"
    if motion == 0 and force == 0:
        return f"no database files found for {path} (looked for .dbm and .dbf)"
    if motion > 0 and force > 0 and motion != force:
        reason = (f"the motion database (version code {motion}) and the force database (version code {force}) "
                  "are of different formats")
    else:
        reason = _file_state("motion", motion) + ", and " + _file_state("force", force)
    return f"no usable database in {path}: {reason}"


def bad_step(step, steps):
    if steps < 1:
        return "the job has no time steps"
    return f"step {step} is not one of the job's steps, 1 to {steps}"


def bad_count(count, steps):
    if count < 0:
        return f"a history of {count} steps cannot be"
    return f"a history of {count} steps is longer than the job's {max(steps, 0)} steps"


def _not_written(output, sub):
    nodal = {5: "displacements", 6: "velocities", 7: "accelerations"}
    if output in nodal:
        return f"the motion database holds no nodal {nodal[output]}"
    if output == 18:
        return "the force database holds no element pressures"
    if output == 17:
        pairs = {8: "5 or 6", 9: "8 or 9", 10: "2 or 3"}
        if sub in pairs:
            return f"the force database lacks element section {pairs[sub]}"
        if sub == 14:
            return "the force database holds no element temperatures"
        return f"the force database holds no element section {sub if sub <= 7 else sub - 3}"
    return "the force database holds no reactions or contact forces"


def request_failure(job, asked, resolved, mask, step, history):
    """The reasons of a request's error mask. `asked` is (type, subtype,
    node, element, position, label) as given, `resolved` the same after the
    library looked the label up."""
    output, sub, node, element, _, label = asked
    info = describe(output)
    by_label = output > 4 and node < 1 and element < 1
    steps = job.dimensions.time_steps
    reasons = []
    if mask & 3 == 3:
        reasons.append(NO_FORMAT)
    if output == 11 and 1 <= sub <= 3 and mask & 12 == 12:
        reasons.append(f"clashing subtype {sub} needs the {'motion' if sub == 1 else 'force'} database, "
                       "which does not exist")
    else:
        if mask & 4:
            if info is None:
                reasons.append(f"output type {output} is not one of 1 to 18")
            else:
                which = "force" if info.needs == "force" else "motion"
                reasons.append(f"{type_name(output)} needs the {which} database, which does not exist")
        if mask & 8 and info is not None:
            reasons.append(f"subtype {sub} of {type_name(output)} is not one of 1 to {info.max_subtype}")
    if mask & 128:
        reasons.append("the job has no time steps")
    if mask & 256:
        reasons.append(bad_count(step, steps) if history else bad_step(step, steps))
    if mask & 1024:
        if label.strip():
            reasons.append(f'label "{label}" is not in the database')
        elif element < 0:
            reasons.append(f"element {element} is below 1, so the request looks for a label, and names none")
        else:
            reasons.append("the request names no item: give a number above 0 or a label")
    if mask & 64:
        reasons.append(f"position {resolved[4]} is not 1, 2 or 3 (start, middle or end of the element)")
    if mask & 4096 and info is not None:
        reasons.append(_item_not_found(job, info, resolved, by_label, label))
    if mask & 8192:
        if by_label and resolved[3] == 0 and resolved[2] > 0:
            reasons.append(f'label "{label}" names node {resolved[2]}, not an element')
        else:
            reasons.append(item_words("element", resolved[3]) + " is not in the database")
    if mask & 2048:
        reasons.append(_not_written(output, sub))
    if mask & 16384:
        reasons.append("the value could not be read or computed from the database")
    if not reasons:
        reasons.append(f"the request was refused with error mask {mask}")
    return "; ".join(reasons)


def _item_not_found(job, info, resolved, by_label, label):
    node, element = resolved[2], resolved[3]
    if by_label and node == 0 and element > 0:
        return f'label "{label}" names element {element}, not a node'
    text = item_words(info.item, node)
    if info.item == "boundary-node" and job.has_node(node):
        return text + " has no boundary condition, so no reaction"
    text += " is not in the database"
    if info.item in _COUNTED:
        text += f" (it has {getattr(job.dimensions, _COUNTED[info.item])})"
    return text
