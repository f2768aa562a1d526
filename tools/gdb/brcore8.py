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


def printers():
    collection = gdb.printing.RegexpCollectionPrettyPrinter("brcore8")
    collection.add_printer("SString", "^SString$", StringPrinter)
    return collection


gdb.printing.register_pretty_printer(gdb.current_objfile(), printers(), replace=True)
