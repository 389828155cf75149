"""Many jobs at once: a function over the jobs of a campaign, each job in a
worker process, since the library holds one job per process."""

import concurrent.futures
import multiprocessing
import os
import sys
import threading

from .errors import ArgumentTypeError

_one_at_a_time = threading.Lock()  # a worker's threads take turns at its one job


def run_on_job(function, path):
    """Opens the job at `path`, calls function(job) and closes it; in a
    worker process."""
    from .job import Job
    with _one_at_a_time:
        with Job(path) as job:
            return function(job)


class _Progress:
    """Jobs done of all, on standard error when it is a terminal."""

    def __init__(self, total, show):
        self.total, self.done = total, 0
        self.show = sys.stderr.isatty() if show is None else bool(show)

    def step(self):
        self.done += 1
        if not self.show:
            return
        width = 30
        filled = width * self.done // max(self.total, 1)
        sys.stderr.write(f"\rjobs [{'#' * filled}{'.' * (width - filled)}] {self.done} of {self.total}")
        if self.done == self.total:
            sys.stderr.write("\n")
        sys.stderr.flush()


def map_jobs(function, paths, executor=None, *, progress=None, errors="raise"):
    """function(job) for the job at each path, each in a worker process; the
    results in the order of `paths`.

    `executor` is any concurrent.futures.Executor: a process pool, or a
    dask.distributed client's `client.get_executor()` to spread the jobs over
    a cluster. Without one, a process pool of one worker a core is made for
    the call. `function` must be picklable (a function of a module). With
    errors="return", a job's exception stands in its place in the results
    instead of being raised. A progress bar is shown on a terminal, or as
    `progress` says.
    """
    if not callable(function):
        raise ArgumentTypeError(f"map_jobs needs a function of the job, not {type(function).__name__}")
    if isinstance(paths, (str, bytes, os.PathLike)):
        paths = [paths]
    paths = [os.fspath(p) for p in paths]
    if errors not in ("raise", "return"):
        raise ValueError(f"errors must be 'raise' or 'return', not {errors!r}")
    own = executor is None
    if own:
        # Fresh interpreters: a forked worker would inherit this process's open job.
        executor = concurrent.futures.ProcessPoolExecutor(
            max_workers=min(len(paths), os.cpu_count() or 1) or 1, mp_context=multiprocessing.get_context("spawn"))
    bar = _Progress(len(paths), progress)
    try:
        futures = {executor.submit(run_on_job, function, path): i for i, path in enumerate(paths)}
        results = [None] * len(paths)
        for future in concurrent.futures.as_completed(futures):
            i = futures[future]
            try:
                results[i] = future.result()
            except Exception as failure:  # noqa: BLE001 - handed back or raised as asked
                if errors == "raise":
                    for other in futures:
                        other.cancel()
                    raise
                results[i] = failure
            bar.step()
        return results
    finally:
        if own:
            executor.shutdown(wait=True)
