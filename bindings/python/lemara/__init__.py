"""Lemara: spelling, better forms and morphology for Basque text.

    >>> import lemara
    >>> checker = lemara.Checker()
    >>> [(f.span.start, f.token, f.forms) for f in checker.check(text)]

Offsets of a Span (start, end) index a Python str.
"""

from ._lemara import (
    Checker,
    Error,
    Finding,
    Form,
    PersonalWord,
    Reading,
    Span,
    Token,
    __version__,
    default_dictionary,
    find_configuration,
)

__all__ = [
    "Checker",
    "Error",
    "Finding",
    "Form",
    "PersonalWord",
    "Reading",
    "Span",
    "Token",
    "__version__",
    "default_dictionary",
    "find_configuration",
]
