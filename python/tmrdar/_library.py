"""Finding and loading libtmrdar.so, and the prototypes of its twelve exports.

The library is the file that TMRDAR_LIBRARY names, when it is set; else the
first found of libtmrdar.so next to this package, the newest in the build trees of
the source tree this package stands in (build/*/src/frame/exports/), and the
one the loader finds on its own path.
"""

import ctypes
import ctypes.util
import glob
import os
import threading

from .errors import LibraryNotFoundError

_NAME = "libtmrdar.so"
_lock = threading.Lock()
_library = None

i32 = ctypes.c_int32
p_i32 = ctypes.POINTER(ctypes.c_int32)
p_f32 = ctypes.POINTER(ctypes.c_float)
_STRING = (ctypes.c_char_p,)
_LENGTH = (ctypes.c_int64,)

# name: argument types; every export returns a 32-bit status.
_PROTOTYPES = {
    "XIT": (),
    "GetDatabaseInfo": (p_i32, p_i32, p_i32, p_i32, p_i32, p_i32) + _STRING + _LENGTH,
    "GetAnalysisDetails": (p_i32, p_i32, p_f32, ctypes.c_char_p, ctypes.c_int64),
    "GetNodeProperties": (p_i32, p_i32, p_i32, p_i32, p_f32),
    "GetElementProperties": (p_i32, p_i32, p_i32, p_i32, p_i32, p_i32, p_f32),
    "GetDistanceAlongRiser": (p_i32, p_i32, p_i32, p_i32, p_f32),
    "GetRequestedSingleValue": (p_i32,) * 9 + (p_f32,) + _STRING + _LENGTH,
    "GetRequestedHistory": (p_i32,) * 9 + (ctypes.c_void_p,) + _STRING + _LENGTH,
    "GetRequestedHistoryError": (p_i32, p_i32, p_i32),
    "GetProcessedDirectStressStrainData": (p_i32, p_i32, p_i32, p_i32, p_f32),
}


def candidates():
    """The paths tried, in order, with the reason each is tried."""
    found = []
    named = os.environ.get("TMRDAR_LIBRARY")
    if named:  # a library named on purpose is not silently replaced by another
        return [(named, "TMRDAR_LIBRARY")]
    here = os.path.dirname(os.path.abspath(__file__))
    found.append((os.path.join(here, _NAME), "next to the package"))
    source_tree = os.path.dirname(os.path.dirname(here))
    pattern = os.path.join(source_tree, "build", "*", "src", "frame", "exports", _NAME)
    trees = sorted(glob.glob(pattern), key=os.path.getmtime, reverse=True)
    found.extend((path, "the build tree") for path in trees)
    if not trees:
        found.append((pattern, "the build tree"))
    found.append((ctypes.util.find_library("tmrdar") or _NAME, "the loader's path"))
    return found


def _load():
    tried = []
    for path, where in candidates():
        loader_path = where == "the loader's path"
        if not loader_path and not os.path.isfile(path):
            tried.append(f"{path} ({where}): no such file")
            continue
        try:
            library = ctypes.CDLL(path)
        except OSError as failure:
            tried.append(f"{path} ({where}): {failure}")
            continue
        library.tmrdar_path = path
        for name, arguments in _PROTOTYPES.items():
            function = getattr(library, name)
            function.argtypes = arguments
            function.restype = i32
        return library
    raise LibraryNotFoundError(
        "cannot load libtmrdar.so; tried " + "; ".join(tried)
        + ". Build the project, or set TMRDAR_LIBRARY to the library's path")


def library():
    """The loaded library, loaded on first use."""
    global _library
    with _lock:
        if _library is None:
            _library = _load()
        return _library
