"""The names of a job's labels. The library resolves a label it is given,
but does not list them, so the names are read from the header's label block:
by the block directory in a V861 file, and in the older formats, which have
none, by finding the run of label records (eight records of text, then one
of numbers) whose names the library resolves."""

import os

import numpy as np

_RECORD = 32
_GROUP = 9               # records a label takes: 8 of its name, 1 of its node or element and kind
_NAME = 7 * _RECORD + 31  # the name's characters
_LABEL_BLOCK = 28         # the directory entry of the labels in a V861 file
_SCAN = 32 << 20          # bytes of an older file searched for the labels


def _header_file(path, codes):
    stem = os.path.splitext(path)[0]
    return stem + (".dbm" if codes.motion > 0 else ".dbf")


def _name(raw):
    return raw[:_NAME].decode("latin-1").rstrip(" \0")


def read_label_names(path, codes, count, resolve):
    """The names of the `count` labels, in the order of the label table."""
    if count < 1:
        return []
    with open(_header_file(path, codes), "rb") as file:
        if max(codes.motion, codes.force) == 13:
            file.seek(_RECORD)
            entries, _ = np.frombuffer(file.read(8), dtype="<i4")
            if entries >= _LABEL_BLOCK:
                file.seek(2 * _RECORD + 4 * (_LABEL_BLOCK - 1))
                start = int(np.frombuffer(file.read(4), dtype="<i4")[0]) - 1
                file.seek(start * _RECORD)
                block = file.read(count * _GROUP * _RECORD)
                names = [_name(block[g * _GROUP * _RECORD:]) for g in range(count)]
                if len(block) == count * _GROUP * _RECORD and all(resolve(n) for n in names):
                    return names
            file.seek(0)
        return _scan(file.read(_SCAN), count, resolve)


def _scan(data, count, resolve):
    records = np.frombuffer(data[:len(data) // _RECORD * _RECORD], dtype=np.uint8).reshape(-1, _RECORD)
    text = ((records >= 0x20) & (records <= 0x7E)).all(axis=1)
    # A name: seven records of text and one whose first 31 characters are
    # text, followed by a record of numbers.
    last = ((records[:, :31] >= 0x20) & (records[:, :31] <= 0x7E)).all(axis=1)
    n = len(records) - _GROUP + 1
    if n < 1:
        return []
    starts = np.ones(n, dtype=bool)
    for k in range(7):
        starts &= text[k:k + n]
    starts &= last[7:7 + n] & ~text[8:8 + n]
    blank = (records[:n, 0] == 0x20) & (records[1:n + 1, 0] == 0x20)
    starts &= ~blank
    candidates = set(np.flatnonzero(starts).tolist())
    for start in sorted(candidates):
        run = [start + g * _GROUP for g in range(count)]
        if not all(r in candidates for r in run):
            continue
        names = [_name(bytes(records[r:r + 8].reshape(-1))) for r in run]
        if all(resolve(name) for name in names):
            return names
    return []
