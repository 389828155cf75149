"""tmrdar: the result databases of riser and pipeline analyses in Python.

    import tmrdar
    with tmrdar.open("riser") as job:
        tension = job.history("element-force", 1, element=1)    # float32, one a step
        graph = job.range_graph("element-force", 1)              # a pandas DataFrame
        job.plot_range_graph("element-force", 1).savefig("range.png")

The package calls libtmrdar.so through ctypes. The library holds one job at
a time in a process; tmrdar.map_jobs runs a function over many jobs, each in
a worker process.
"""

from .campaign import map_jobs
from .errors import (ArgumentError, ArgumentTypeError, Error, ItemNotFoundError, JobStateError,
                     LibraryNotFoundError, NotWrittenError, OpenError, OutputError, PositionError, ReadError,
                     RequestError, StepError)
from .job import Job, open
from .outputs import OUTPUT_TYPES

__version__ = "0.1.0"

__all__ = ["ArgumentError", "ArgumentTypeError", "Error", "ItemNotFoundError", "Job", "JobStateError",
           "LibraryNotFoundError", "NotWrittenError", "OUTPUT_TYPES", "OpenError", "OutputError", "PositionError",
           "ReadError", "RequestError", "StepError", "map_jobs", "open"]
