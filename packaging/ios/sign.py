#!/usr/bin/env python3
"""Signs a library ad hoc, in place, for old and new systems: iOS 8 only accepts SHA-1 hashes, later
systems prefer SHA-256 hashes, and the signature contains both. Adds a UUID, which identifies the
library in crash logs, if it has none.

usage: sign.py LIBRARY IDENTIFIER
"""
import hashlib
import struct
import sys

from macho import LC_CODE_SIGNATURE, LC_UUID, MachO

# Numbers in the signature, which is big-endian, unlike everything else in the file.
SUPER_BLOB = 0xFADE0CC0
CODE_DIRECTORY = 0xFADE0C02
REQUIREMENTS = 0xFADE0C01
CMS_WRAPPER = 0xFADE0B01

SLOT_CODE_DIRECTORY = 0
SLOT_REQUIREMENTS = 2
SLOT_ALTERNATE_CODE_DIRECTORY = 0x1000
SLOT_CMS = 0x10000

VERSION = 0x20001
AD_HOC = 2
PAGE_BITS = 12
HASH_TYPES = {'sha1': 1, 'sha256': 2}
SEGMENT_ALIGNMENT = 0x4000


def blob(magic, content=b''):
    return struct.pack('>II', magic, 8 + len(content)) + content


NO_REQUIREMENTS = blob(REQUIREMENTS, struct.pack('>I', 0))


def code_directory(code, identifier, algorithm):
    """Returns a blob with the hashes of all pages, after those of the requirements and of the
    bundle's property list, which are zeros because there is none."""
    def digest(data):
        return hashlib.new(algorithm, data).digest()

    page = 1 << PAGE_BITS
    size = hashlib.new(algorithm).digest_size
    special = [digest(NO_REQUIREMENTS), bytes(size)]
    pages = [digest(code[at:at + page]) for at in range(0, len(code), page)]
    name = identifier.encode() + b'\0'
    fixed = 44
    hashes = fixed + len(name) + len(special) * size
    fields = struct.pack('>IIIIIIIBBBBI', VERSION, AD_HOC, hashes, fixed, len(special), len(pages),
                         len(code), size, HASH_TYPES[algorithm], 0, PAGE_BITS, 0)
    return blob(CODE_DIRECTORY, fields + name + b''.join(special + pages))


def signature(code, identifier):
    parts = [(SLOT_CODE_DIRECTORY, code_directory(code, identifier, 'sha1')),
             (SLOT_REQUIREMENTS, NO_REQUIREMENTS),
             (SLOT_ALTERNATE_CODE_DIRECTORY, code_directory(code, identifier, 'sha256')),
             (SLOT_CMS, blob(CMS_WRAPPER))]
    at = 12 + 8 * len(parts)
    index = b''
    for slot, part in parts:
        index += struct.pack('>II', slot, at)
        at += len(part)
    content = struct.pack('>I', len(parts)) + index + b''.join(part for _, part in parts)
    return blob(SUPER_BLOB, content)


def add_uuid(file):
    digest = bytearray(hashlib.sha256(file.data).digest()[:16])
    # Version 8: derived from the contents by a custom method.
    digest[6] = digest[6] & 0x0F | 0x80
    digest[8] = digest[8] & 0x3F | 0x80
    file.append_command(struct.pack('<II', LC_UUID, 24) + digest)


def add_signature_command(file):
    """Adds a command for a signature at the end of the file, for a linker that does not sign, and
    returns its offset."""
    file.data.extend(bytes(-len(file.data) % 16))
    return file.append_command(struct.pack('<IIII', LC_CODE_SIGNATURE, 16, len(file.data), 0))


def sign(data, identifier):
    """Returns the file with a signature, which replaces the linker's, if there is one."""
    file = MachO(data)
    if file.offset_of(LC_UUID) is None:
        add_uuid(file)
    command = file.offset_of(LC_CODE_SIGNATURE)
    if command is None:
        command = add_signature_command(file)
    end = file.word(command + 8)
    # The command is hashed, too, so the signature's size must be known before.
    size = (len(signature(bytes(end), identifier)) + 15) & ~15
    file.set_word(command + 12, size)
    last = file.segment('__LINKEDIT')
    used = end + size - last.file_offset
    file.resize_segment(last, -(-used // SEGMENT_ALIGNMENT) * SEGMENT_ALIGNMENT, used)
    code = bytes(file.data[:end])
    return code + signature(code, identifier).ljust(size, b'\0')


def main():
    path, identifier = sys.argv[1:]
    with open(path, 'rb') as file:
        signed = sign(file.read(), identifier)
    with open(path, 'wb') as file:
        file.write(signed)


if __name__ == '__main__':
    main()
