"""The exceptions of the package: every result code of an export and every
error mask of a request becomes one of them, with its reason in words."""


class Error(Exception):
    """A failure of the library or of a request. `code` is the export's own
    result: a negative code, or a request's error mask (256 for a step or
    count the package refused before asking; 0 where no export was called)."""

    def __init__(self, message, code=0):
        super().__init__(message)
        self.code = code


class LibraryNotFoundError(Error, OSError):
    """libtmrdar.so could not be found or loaded."""


class OpenError(Error, OSError):
    """A path holds no usable database."""


class JobStateError(Error, RuntimeError):
    """A second job opened while one is open, or a closed job asked."""


class ArgumentError(Error, ValueError):
    """An argument's value is not one the request can take."""


class ArgumentTypeError(Error, TypeError):
    """An argument is of the wrong type."""


class RequestError(Error):
    """A request refused by the library. `mask` is its error mask and
    `flags` the numbers of the request arguments that the mask blames."""

    def __init__(self, message, code=0, flags=()):
        super().__init__(message, code)
        self.mask = code
        self.flags = tuple(flags)


class OutputError(RequestError, ValueError):
    """The output type or subtype is not one the job can answer."""


class StepError(RequestError, IndexError):
    """A step or count outside the job's steps."""


class ItemNotFoundError(RequestError, LookupError):
    """A node, element, entry, label or curve that is not in the job."""


class PositionError(RequestError, ValueError):
    """A position on an element that is not 1, 2 or 3."""


class NotWrittenError(RequestError):
    """The job's files hold no results of that kind."""


class ReadError(RequestError, OSError):
    """A value could not be read from the files, or a file not closed."""


# The class of a refused request by the first of its mask's bits in this order.
_MASK_CLASSES = ((3 | 4 | 8, OutputError), (128 | 256, StepError), (1024 | 4096 | 8192, ItemNotFoundError),
                 (64, PositionError), (2048, NotWrittenError), (16384, ReadError))


def request_error_class(mask):
    for bits, cls in _MASK_CLASSES:
        if mask & bits:
            return cls
    return RequestError
