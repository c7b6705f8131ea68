"""Shows TOVKernel's text and containers in gdb: source Tools/Debugger/tovkernel_gdb.py

Strings and paths are shown as their text, smart pointers as the pointer that they hold, and buffers, arrays and ring
buffers as their elements. Everything is read from memory; no function of the program is called.
"""

import gdb
import gdb.printing


def block_of(buffer):
    """Returns a pointer to the first element of a buffer, or a null pointer if it has no block."""
    return buffer["m_pArray"]["m_pObject"]["m_pObject"]


class TextPrinter:
    def __init__(self, value):
        self.block = block_of(value["m_oData"])
        self.length = int(value["m_nStringLength"])

    def to_string(self):
        if self.length <= 0 or int(self.block) == 0:
            return ""
        # A string may share a block that holds a longer text, so its own length counts.
        size = self.block.type.target().sizeof
        text = gdb.selected_inferior().read_memory(int(self.block), self.length * size).tobytes()
        return text.decode("utf-16-le" if size == 2 else "utf-8", "backslashreplace")

    def display_hint(self):
        return "string"


class PathPrinter(TextPrinter):
    def __init__(self, value):
        super().__init__(value["m_oPath"])


class SmartPointerPrinter:
    def __init__(self, value):
        self.holder = value["m_pObject"].dereference()

    def to_string(self):
        return f"{self.holder['m_pObject']}, {int(self.holder['m_lRefCount'])} references"


class ElementPrinter:
    """Shows elements that are stored in a row; they can begin at any place and continue at the first place."""

    def __init__(self, name, first, count, capacity, begin=0):
        self.name, self.first, self.count, self.capacity, self.begin = name, first, count, capacity, begin

    def to_string(self):
        return f"{self.name} of {self.count} elements, capacity {self.capacity}"

    def children(self):
        for index in range(self.count):
            yield f"[{index}]", self.first[(self.begin + index) % self.capacity]

    def display_hint(self):
        return "array"


def buffer_printer(value):
    size = int(value["m_lSize"])
    return ElementPrinter("buffer", block_of(value), size, size)


def array_printer(value):
    storage = value["m_aArray"]["_M_impl"]
    begin, end, limit = (storage[name] for name in ("_M_start", "_M_finish", "_M_end_of_storage"))
    return ElementPrinter("array", begin, int(end - begin), int(limit - begin))


def ring_buffer_printer(value):
    return ElementPrinter("ring buffer", value["m_pBuffer"], int(value["m_lCount"]), int(value["m_lCapacity"]),
                          int(value["m_lReadPos"]))


printers = gdb.printing.RegexpCollectionPrettyPrinter("TOVKernel")
printers.add_printer("text", "^CTOVString[AW]$", TextPrinter)
printers.add_printer("path", "^CTOVPath$", PathPrinter)
printers.add_printer("smart pointer", "^CTOVSmartPointer<.*>$", SmartPointerPrinter)
printers.add_printer("buffer", "^CTOVBuffer<.*>$", buffer_printer)
printers.add_printer("array", "^CTOVArray<.*>$", array_printer)
printers.add_printer("ring buffer", "^CTOVRingBuffer<.*>$", ring_buffer_printer)
gdb.printing.register_pretty_printer(None, printers, replace=True)
