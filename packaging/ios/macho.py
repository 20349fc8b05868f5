"""Reads and changes the load commands of a thin Mach-O file."""
import struct
from typing import NamedTuple

MAGIC_32 = 0xFEEDFACE
MAGIC_64 = 0xFEEDFACF

LC_SEGMENT = 0x1
LC_SYMTAB = 0x2
LC_DYSYMTAB = 0xB
LC_SEGMENT_64 = 0x19
LC_UUID = 0x1B
LC_CODE_SIGNATURE = 0x1D


class Segment(NamedTuple):
    command: int  # offset of its load command
    name: str
    address: int
    size: int
    file_offset: int
    file_size: int


class MachO:
    """A file's bytes, which can be changed in place."""

    def __init__(self, data):
        self.data = bytearray(data)
        magic = self.word(0)
        if magic not in (MAGIC_32, MAGIC_64):
            raise ValueError('not a thin Mach-O file')
        self.is_64_bit = magic == MAGIC_64
        self.header_size = 32 if self.is_64_bit else 28

    def word(self, offset):
        return struct.unpack_from('<I', self.data, offset)[0]

    def set_word(self, offset, value):
        struct.pack_into('<I', self.data, offset, value)

    def commands(self):
        """Yields the number and the offset of each load command, in order."""
        offset = self.header_size
        for _ in range(self.word(16)):
            yield self.word(offset), offset
            offset += self.word(offset + 4)

    def offset_of(self, number):
        """Returns the offset of the command with this number, or None."""
        return next((offset for command, offset in self.commands() if command == number), None)

    def segments(self):
        for command, offset in self.commands():
            if command not in (LC_SEGMENT, LC_SEGMENT_64):
                continue
            name = self.data[offset + 8:offset + 24].rstrip(b'\0').decode()
            fields = '<QQQQ' if self.is_64_bit else '<IIII'
            yield Segment(offset, name, *struct.unpack_from(fields, self.data, offset + 24))

    def sections(self):
        """Yields the offset of the description of each section in all segments."""
        command_size, size = (72, 80) if self.is_64_bit else (56, 68)
        for segment in self.segments():
            count = self.word(segment.command + (64 if self.is_64_bit else 48))
            for index in range(count):
                yield segment.command + command_size + index * size

    def append_command(self, command):
        """Adds a command after the others and returns its offset. Raises ValueError if it does not
        fit before the first section's contents."""
        at = self.header_size + self.word(20)
        offsets = (self.word(section + (48 if self.is_64_bit else 40)) for section in self.sections())
        if at + len(command) > min(offset for offset in offsets if offset > 0):
            raise ValueError('there is no room for another load command')
        self.data[at:at + len(command)] = command
        self.set_word(16, self.word(16) + 1)
        self.set_word(20, self.word(20) + len(command))
        return at

    def segment(self, name):
        return next(segment for segment in self.segments() if segment.name == name)

    def resize_segment(self, segment, size, file_size):
        if self.is_64_bit:
            struct.pack_into('<Q', self.data, segment.command + 32, size)
            struct.pack_into('<Q', self.data, segment.command + 48, file_size)
        else:
            struct.pack_into('<I', self.data, segment.command + 28, size)
            struct.pack_into('<I', self.data, segment.command + 36, file_size)
