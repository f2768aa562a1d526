"""Shows the library's types in gdb as what they hold.

The library carries this script in its debug section, and it is installed beside the library under
its name: gdb loads it with the library where the folder is on the auto-load safe path; anywhere
else: "source brcore8.py".
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


def base_named(gdb_type, prefix):
    """The type itself or the nearest base class whose name begins so."""
    gdb_type = gdb_type.unqualified().strip_typedefs()
    while not gdb_type.name.startswith(prefix):
        gdb_type = next(field.type for field in gdb_type.fields() if field.is_base_class)
    return gdb_type


class Container:
    """What has a count and elements in order."""

    def __init__(self, value):
        self.value = value
        self.count = int(value["count_"])

    def to_string(self):
        return "%d elements" % self.count

    def children(self):
        for index, element in enumerate(self.elements()):
            yield "[%d]" % index, element

    def display_hint(self):
        return "array"


class TablePrinter(Container):
    """STable<T>: its elements in order."""

    def element(self):
        return base_named(self.value.type, "STable<").template_argument(0)

    def to_string(self):
        return "%d of %d" % (self.count, int(self.value["capacity_"]))

    def elements(self):
        first = self.value["data_"].cast(self.element().pointer())
        for index in range(self.count):
            yield (first + index).dereference()


class StringTablePrinter(TablePrinter):
    """SStringTable: its strings in order."""

    def element(self):
        return gdb.lookup_type("SString")


class ListPrinter(Container):
    """SList<T>: its elements from front to back; an element follows its node."""

    def elements(self):
        element = base_named(self.value.type, "SList<").template_argument(0)
        node = self.value["ends_"]["next"]
        for _ in range(self.count):
            yield (node + 1).cast(element.pointer()).dereference()
            node = node["next"]


class ItemListPrinter(Container):
    """SDList: its items from head to tail, as what they are."""

    def elements(self):
        item = self.value["head_"]
        for _ in range(self.count):
            yield item.cast(item.dynamic_type).dereference()
            item = item["next_"]


class PairsPrinter(Container):
    """A map: its pairs in order; a pair follows its entry."""

    def entries(self):
        """In key order, without recursion, as deep as the tree may be."""
        path, entry = [], self.value["root_"]
        while path or int(entry):
            while int(entry):
                path.append(entry)
                entry = entry["left"]
            entry = path.pop()
            yield entry
            entry = entry["right"]

    def children(self):
        for index, (key, value) in enumerate(self.pairs()):
            yield "[%d]" % (2 * index), key
            yield "[%d]" % (2 * index + 1), value

    def display_hint(self):
        return "map"


class TreeMapPrinter(PairsPrinter):
    """STreeMap<Key, T>, and the keyword and symbol tables that stand on it."""

    def pairs(self):
        base = base_named(self.value.type, "STreeMap<")
        element = gdb.lookup_type(base.name + "::Element").pointer()
        for entry in self.entries():
            pair = (entry + 1).cast(element)
            yield pair["key"], pair["value"]


class MapPrinter(PairsPrinter):
    """SMap<K, V>, SUnsortedMap<K, V> and the string maps, each in its own order."""

    def pairs(self):
        base = base_named(self.value.type, "__SMap<")
        unsorted = bool(base.template_argument(3))
        kind = "::Linked" if unsorted else "::Unlinked"
        self.node = gdb.lookup_type(base.name + kind).pointer()
        for entry in self.insertions() if unsorted else self.entries():
            pair = (entry + 1).cast(self.node)["pair"]
            yield pair["key"], pair["value"]

    def insertions(self):
        entry = self.value["ends_"]["first"]
        for _ in range(self.count):
            yield entry
            entry = (entry + 1).cast(self.node)["after"]


def printers():
    collection = gdb.printing.RegexpCollectionPrettyPrinter("brcore8")
    for name, pattern, printer in (
        ("SString", "SString", StringPrinter),
        ("STable", "STable<.*>", TablePrinter),
        ("SStringTable", "SStringTable", StringTablePrinter),
        ("SList", "SList<.*>", ListPrinter),
        ("SDList", "SX?DList", ItemListPrinter),
        ("STreeMap", "STreeMap<.*>|SKeywordTable|SSymbolTable", TreeMapPrinter),
        ("SMap", "S(Unsorted)?Map<.*>|SString(Unsorted)?Map(NoCase)?", MapPrinter),
    ):
        collection.add_printer(name, "^(%s)$" % pattern, printer)
    return collection


gdb.printing.register_pretty_printer(gdb.current_objfile(), printers(), replace=True)
