"""Shows TOVKernel's text, containers and objects in gdb.

A copy stands beside the library, where gdb finds it by itself if it may read scripts from that folder: write
"add-auto-load-safe-path FOLDER" into ~/.gdbinit once. Otherwise: source tovkernel_gdb.py

Strings and paths are shown as their text, containers as their elements, pointers and handles by what they hold, runtime
classes by name and super classes, and timers by their defined channels. Everything is read from memory; no function of
the program is called. The elements of queues and stacks are shown by the views of the standard library.

A compiler leaves the description of a class to the module that has its virtual operations, which is the library. Where the
library was built without debug information, texts, paths and containers are shown all the same, and other objects need a
program that was compiled with -femit-class-debug-always (g++) or -fstandalone-debug (clang++).
"""

import re

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


def counted(number, what):
    return f"{number} {what}" + ("" if number == 1 else "s")


class SmartPointerPrinter:
    def __init__(self, value):
        self.holder = value["m_pObject"]

    def to_string(self):
        if int(self.holder) == 0:
            return "no holder"
        holder = self.holder.dereference()
        return f"{holder['m_pObject']}, {counted(int(holder['m_lRefCount']), 'reference')}"


class HandlePrinter:
    def __init__(self, value):
        self.value = value

    def to_string(self):
        number = int(self.value["m_lHandle"])
        return "handle without an id" if number == -1 else f"handle {number}"

    def children(self):
        yield "object", self.value["m_pObject"]
        yield "database", self.value["m_pDatabase"]


class ClassPrinter:
    def __init__(self, value):
        self.value = value

    def to_string(self):
        name = self.value["m_szName"]
        name = name.string("utf-8", "backslashreplace") if int(name) != 0 else ""
        return f"class {name}, id {int(self.value['m_dwClassId'])}"

    def children(self):
        super_classes = self.value["m_aSuperClasses"]["_M_impl"]
        begin = super_classes["_M_start"]
        for index in range(int(super_classes["_M_finish"] - begin)):
            yield f"[{index}]", begin[index].dereference()

    def display_hint(self):
        return "array"


class BitArrayPrinter:
    MOST_BITS = 256

    def __init__(self, value):
        self.bytes, self.count = value["m_pStream"], int(value["m_nNumBits"])

    def to_string(self):
        shown = min(self.count, self.MOST_BITS)
        bits = "".join(str((int(self.bytes[bit // 8]) >> (7 - bit % 8)) & 1) for bit in range(shown))
        return counted(self.count, "bit") + (f" {bits}" if bits else "") + ("..." if shown < self.count else "")


class TimerPrinter:
    def __init__(self, value):
        self.value = value

    def to_string(self):
        return "timer, " + ("high resolution" if self.value["m_bHighResolutionTimer"] else "milliseconds")

    def children(self):
        channels = self.value["m_aChannels"]
        first, last = channels.type.range()
        for index in range(first, last + 1):
            channel = channels[index]
            if channel["bDefined"]:
                state = "paused" if channel["bPaused"] else "running" if channel["bRunning"] else "stopped"
                yield f"[{index}]", f"{TextPrinter(channel['sName']).to_string()}, {state}"

    def display_hint(self):
        return "array"


class ElementPrinter:
    """Shows elements that are stored in a row; they can begin at any place and continue at the first place."""

    def __init__(self, name, first, count, capacity, begin=0):
        self.name, self.first, self.count, self.capacity, self.begin = name, first, count, capacity, begin

    def to_string(self):
        return f"{self.name} of {counted(self.count, 'element')}, capacity {self.capacity}"

    def children(self):
        for index in range(self.count):
            yield f"[{index}]", self.first[(self.begin + index) % self.capacity]

    def display_hint(self):
        return "array"


class AdapterPrinter:
    """Shows a container of the standard library that a class of this library guards."""

    def __init__(self, name, container):
        self.name, self.container = name, container
        self.view = gdb.default_visualizer(container)

    def elements(self):
        return list(self.view.children()) if hasattr(self.view, "children") else None

    def to_string(self):
        elements = self.elements()
        return self.name if elements is None else f"{self.name} of {counted(len(elements), 'element')}"

    def children(self):
        elements = self.elements()
        if elements is None: # gdb has no views of the standard library
            yield "container", self.container
            return
        for index, (_, element) in enumerate(elements):
            yield f"[{index}]", element

    def display_hint(self):
        return "array"


def queue_printer(value):
    return AdapterPrinter("queue", value["m_aQueue"])


def stack_printer(value):
    return AdapterPrinter("stack", value["m_aStack"])


def buffer_printer(value):
    size = int(value["m_lSize"])
    return ElementPrinter("buffer", block_of(value), size, size)


class UndescribedPrinter:
    """Stands in where nobody has described the class of an object to gdb."""

    def __init__(self, value):
        pass

    def to_string(self):
        return "not described: compile the program with -femit-class-debug-always (g++) or -fstandalone-debug (clang++)"


def described(printer, without_description=UndescribedPrinter):
    """The printer of a class, and the one that does without a description of it."""
    return lambda value: (printer if value.type.strip_typedefs().fields() else without_description)(value)


def undescribed_array_printer(value):
    """An array is a pointer to its virtual operations, and the three pointers of a std::vector."""
    try:
        element = gdb.lookup_type(re.search("<(.*)>$", value.type.strip_typedefs().name).group(1).strip()).pointer()
    except gdb.error:
        return UndescribedPrinter(value)
    pointers = value.address.cast(element.pointer())
    begin, end, limit = (pointers[index] for index in (1, 2, 3))
    return ElementPrinter("array", begin, int(end - begin), int(limit - begin))


def array_printer(value):
    storage = value["m_aArray"]["_M_impl"]
    begin, end, limit = (storage[name] for name in ("_M_start", "_M_finish", "_M_end_of_storage"))
    return ElementPrinter("array", begin, int(end - begin), int(limit - begin))


def ring_buffer_printer(value):
    return ElementPrinter("ring buffer", value["m_pBuffer"], int(value["m_lCount"]), int(value["m_lCapacity"]),
                          int(value["m_lReadPos"]))


printers = gdb.printing.RegexpCollectionPrettyPrinter("TOVKernel")
printers.add_printer("text", "^CTOVString[AW]$", described(TextPrinter))
printers.add_printer("path", "^CTOVPath$", described(PathPrinter))
printers.add_printer("smart pointer", "^CTOVSmartPointer<.*>$", described(SmartPointerPrinter))
printers.add_printer("buffer", "^CTOVBuffer<.*>$", described(buffer_printer))
printers.add_printer("array", "^CTOVArray<.*>$", described(array_printer, undescribed_array_printer))
printers.add_printer("queue", "^CTOV(Safe)?Queue<.*>$", described(queue_printer))
printers.add_printer("stack", "^CTOVStack<.*>$", described(stack_printer))
printers.add_printer("bit array", "^CTOVBitArray$", described(BitArrayPrinter))
printers.add_printer("handle", "^CTOVHandle$", described(HandlePrinter))
printers.add_printer("class", "^CTOVClass$", described(ClassPrinter))
printers.add_printer("timer", "^CTOVTimer$", described(TimerPrinter))
printers.add_printer("ring buffer", "^CTOVRingBuffer<.*>$", described(ring_buffer_printer))
gdb.printing.register_pretty_printer(None, printers, replace=True)
