"""Shows the library's types in gdb as what they hold.

Installed beside the library under its name, gdb loads it with the library where the folder is on
the auto-load safe path; anywhere else: "source brcore8.py".
"""

import gdb
import gdb.printing

# The buffer in front of a string's text: references, bytes, capacity, characters.
BYTES_OFFSET = -12
CAPACITY_OFFSET = -8


def quoted(data):
    """C's spelling of bytes; what is no printable ASCII in octal, as gdb writes it."""
    parts = []
    for byte in data:
        if byte in (0x22, 0x5C):
            parts.append("\\" + chr(byte))
        elif 0x20 <= byte < 0x7F:
            parts.append(chr(byte))
        else:
            parts.append("\\%03o" % byte)
    return '"' + "".join(parts) + '"'


class StringPrinter:
    """SString: the text by its byte length, zero bytes included."""

    def __init__(self, value):
        self.value = value

    def to_string(self):
        address = int(self.value["text_"])
        if address == 0:
            return "<no text: null>"
        memory = gdb.selected_inferior()
        try:
            def field(offset):
                raw = memory.read_memory(address + offset, 4).tobytes()
                return int.from_bytes(raw, "little", signed=True)

            length = field(BYTES_OFFSET)
            if not 0 <= length <= field(CAPACITY_OFFSET):
                return "<no text: lengths make no sense>"
            limit = gdb.parameter("print elements") or length
            shown = min(length, limit)
            text = memory.read_memory(address, shown).tobytes() if shown else b""
        except gdb.MemoryError:
            return "<no text: unreadable>"
        return quoted(text) + ("..." if shown < length else "")


class TablePrinter:
    """STable<T>: its elements in order."""

    def __init__(self, value):
        self.value = value
        self.element = value.type.template_argument(0)

    def to_string(self):
        count, capacity = int(self.value["count_"]), int(self.value["capacity_"])
        return "%d of %d" % (count, capacity)

    def children(self):
        first = self.value["data_"].cast(self.element.pointer())
        for index in range(int(self.value["count_"])):
            yield "[%d]" % index, (first + index).dereference()

    def display_hint(self):
        return "array"


class ListPrinter:
    """SList<T>: its elements from front to back; an element follows its node."""

    def __init__(self, value):
        self.value = value
        self.element = value.type.template_argument(0)

    def to_string(self):
        return "%d elements" % int(self.value["count_"])

    def children(self):
        node = self.value["ends_"]["next"]
        for index in range(int(self.value["count_"])):
            yield "[%d]" % index, (node + 1).cast(self.element.pointer()).dereference()
            node = node["next"]

    def display_hint(self):
        return "array"


class MapPrinter:
    """STreeMap<Key, T>: its pairs in order; an element follows its entry."""

    def __init__(self, value):
        self.value = value
        self.element = gdb.lookup_type(value.type.unqualified().name + "::Element")

    def to_string(self):
        return "%d elements" % int(self.value["count_"])

    def entries(self):
        """In order, without recursion, as deep as the tree may be."""
        path, entry = [], self.value["root_"]
        while path or int(entry):
            while int(entry):
                path.append(entry)
                entry = entry["left"]
            entry = path.pop()
            yield entry
            entry = entry["right"]

    def children(self):
        for index, entry in enumerate(self.entries()):
            element = (entry + 1).cast(self.element.pointer())
            yield "[%d]" % (2 * index), element["key"]
            yield "[%d]" % (2 * index + 1), element["value"]

    def display_hint(self):
        return "map"


def printers():
    collection = gdb.printing.RegexpCollectionPrettyPrinter("brcore8")
    collection.add_printer("SString", "^SString$", StringPrinter)
    collection.add_printer("STable", "^STable<.*>$", TablePrinter)
    collection.add_printer("SList", "^SList<.*>$", ListPrinter)
    collection.add_printer("STreeMap", "^STreeMap<.*>$", MapPrinter)
    return collection


gdb.printing.register_pretty_printer(gdb.current_objfile(), printers(), replace=True)
