"""map_jobs over the jobs of a campaign, with a process pool and with a
local dask.distributed cluster."""
import concurrent.futures
import multiprocessing

import pytest

import tmrdar
from conftest import SAMPLE


def peak_tension(job):
    """The greatest effective tension at the top and the job's format."""
    return job.version, float(job.history("element-force", 1, element=1).max())


@pytest.fixture(scope="module")
def campaign(formats):
    return [formats[name] for name in ("V861", "V841", "V815", "V811")]


@pytest.fixture(scope="module")
def expected(campaign):
    with tmrdar.open(SAMPLE) as job:
        peak = peak_tension(job)[1]
    return [(name, peak) for name in ("V861", "V841", "V815", "V811")]


def test_process_pool(campaign, expected):
    with concurrent.futures.ProcessPoolExecutor(2, mp_context=multiprocessing.get_context("spawn")) as pool:
        assert tmrdar.map_jobs(peak_tension, campaign, pool) == expected
    with tmrdar.open(SAMPLE):  # this process holds no job of the campaign
        pass


def test_a_failed_job_stands_in_its_place(campaign, expected, tmp_path):
    results = tmrdar.map_jobs(peak_tension, [campaign[0], tmp_path / "none", campaign[3]], errors="return")
    assert results[0] == expected[0] and results[2] == expected[3]
    assert isinstance(results[1], tmrdar.OpenError) and "no database files found" in str(results[1])
    with pytest.raises(tmrdar.OpenError):
        tmrdar.map_jobs(peak_tension, [tmp_path / "none"], concurrent.futures.ThreadPoolExecutor(2))


def test_threads_of_one_process_take_turns(campaign, expected):
    with concurrent.futures.ThreadPoolExecutor(4) as threads:
        assert tmrdar.map_jobs(peak_tension, campaign, threads) == expected


def test_dask_cluster(campaign, expected):
    distributed = pytest.importorskip("distributed")
    with distributed.LocalCluster(n_workers=2, threads_per_worker=2, processes=True, dashboard_address=None,
                                  silence_logs=50) as cluster, distributed.Client(cluster) as client:
        assert tmrdar.map_jobs(peak_tension, campaign, client.get_executor()) == expected
