"""The package from this source tree against the library, tool and sample
job of a build tree: the one TMRDAR_LIBRARY names, or the newest under
build/."""
import io
import os
import pathlib
import shutil
import subprocess
import sys

import pytest

os.environ.setdefault("MPLBACKEND", "Agg")
sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1]))

import tmrdar  # noqa: E402
from tmrdar._library import library  # noqa: E402

BUILD = pathlib.Path(library().tmrdar_path).resolve().parents[3]
CLI = BUILD / "src" / "tools" / "tmrdar"
SAMPLE = str(BUILD / "sample" / "riser")
FORMATS = ("V861", "V841", "V831", "V821", "V815", "V811")


def cli(*words):
    """The tool's exit status, standard output and standard error."""
    done = subprocess.run([str(CLI), *map(str, words)], capture_output=True, text=True, check=False)
    return done.returncode, done.stdout, done.stderr


def cli_table(*words):
    import pandas
    status, out, err = cli(*words, "--csv")
    assert status == 0, err
    return pandas.read_csv(io.StringIO(out), dtype=str)


def cli_reason(*words):
    """The one line the tool gives on standard error for a refusal."""
    status, _, err = cli(*words)
    assert status == 1, err
    return err.strip().removeprefix("tmrdar: ")


@pytest.fixture
def job():
    with tmrdar.open(SAMPLE) as opened:
        yield opened


@pytest.fixture(scope="session")
def formats(tmp_path_factory):
    """The sample riser written in each format, by the build's writer."""
    folder = tmp_path_factory.mktemp("formats")
    paths = {}
    for name in FORMATS:
        paths[name] = str(folder / f"riser-{name}")
        subprocess.run([str(BUILD / "src" / "tools" / "tmrdar_sample_job"), "--format", name, paths[name]],
                       check=True, capture_output=True)
    return paths


@pytest.fixture(scope="session")
def damaged(tmp_path_factory, formats):
    """Jobs made bad from the sample: the force file alone, a V811 force file
    cut short, and files of no database."""
    folder = tmp_path_factory.mktemp("damaged")
    shutil.copy(SAMPLE + ".dbf", folder / "force-only.dbf")
    shutil.copy(formats["V811"] + ".dbm", folder / "V811-short.dbm")
    with open(formats["V811"] + ".dbf", "rb") as whole, open(folder / "V811-short.dbf", "wb") as part:
        part.write(whole.read(os.path.getsize(formats["V811"] + ".dbf") // 2))
    (folder / "junk.dbm").write_bytes(b"not a database" * 10)
    return folder
