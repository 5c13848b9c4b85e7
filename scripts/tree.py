"""The tree's C++ files and what they include of each other."""
import os
import re

TOPS = ("quor", "servers", "host", "tests", "benchmarks")
NOT_OURS = ("benchmarks/peers",)
SOURCE = (".cpp", ".h", ".rc")
INCLUDE = re.compile(r'^[ \t]*#[ \t]*include[ \t]*(["<])([^">]+)[">]', re.M)
# Folders that the compiler looks in for a quoted name; the includer's own comes first.
ROOTS = ("", "tests")


def read(path):
    with open(path, encoding="latin-1", newline="") as file:
        return file.read()


def sources(root, endings=SOURCE):
    """Paths from the root, sorted."""
    found = []
    for top in TOPS:
        for folder, folders, files in os.walk(os.path.join(root, top)):
            here = os.path.relpath(folder, root)
            folders[:] = [name for name in folders if os.path.join(here, name) not in NOT_OURS]
            found += [os.path.join(here, name) for name in files if name.endswith(endings)]
    return sorted(found)


def resolve(root, includer, name):
    """The tree's file that a quoted name means, or None."""
    for folder in (os.path.dirname(includer), *ROOTS):
        path = os.path.normpath(os.path.join(folder, name))
        if os.path.isfile(os.path.join(root, path)):
            return path
    return None


def includes(root, path):
    """(line number, whether quoted, name, the tree's file or None) of each include line."""
    text = read(os.path.join(root, path))
    for match in INCLUDE.finditer(text):
        quoted, name = match[1] == '"', match[2]
        yield text.count("\n", 0, match.start()) + 1, quoted, name, resolve(root, path, name)


class Closures:
    """All files of the tree that a file sees, itself included."""

    def __init__(self, root):
        self.root, self.direct = root, {}

    def of(self, path):
        seen, waiting = set(), [path]
        while waiting:
            here = waiting.pop()
            if here in seen:
                continue
            seen.add(here)
            if here not in self.direct:
                self.direct[here] = [file for *_, file in includes(self.root, here) if file]
            waiting += self.direct[here]
        return sorted(seen)
