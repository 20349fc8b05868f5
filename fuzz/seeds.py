"""Writes small inputs for a fuzz target to start from.

usage: seeds.py TARGET DIRECTORY
"""
import glob
import os
import plistlib
import struct
import sys
import zlib

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), '../tests/fixture'))
import gif_writer


def gif(version, *images):
    """A GIF of 4x4 pixels; an image is its left edge and the bits of its packed fields."""
    size = (4, 4)
    # Compressed, with codes that grow.
    data = b'\x02\x03\x84\x8f\x05\0'
    return gif_writer.gif(size, [gif_writer.image(size, data, delay=5, left=left, flags=flags,
                                                  control=control)
                                 for left, flags, control in images],
                          colors=bytes((0, 0, 0, 255, 255, 255)), version=version,
                          extensions=b'\x21\xff\x0bNETSCAPE2.0\x03\x01\0\0\0')


def chunk(kind, body):
    return struct.pack('>I', len(body)) + kind + body + struct.pack('>I', zlib.crc32(kind + body))


def png_around(color_type, depth, interlace, data):
    header = struct.pack('>IIBBBBB', 2, 2, depth, color_type, 0, 0, interlace)
    palette = chunk(b'PLTE', bytes(6)) + chunk(b'tRNS', b'\x80') if color_type == 3 else b''
    return (b'\x89PNG\r\n\x1a\n' + chunk(b'IHDR', header) + palette + data + chunk(b'IEND', b''))


def png(color_type, depth, row, interlace=0):
    return png_around(color_type, depth, interlace,
                      chunk(b'IDAT', zlib.compress((b'\0' + row) * 2)))


def own_png(color_type, depth, row):
    """Compressed in pieces, as frames are written."""
    rows = b'\0' + row + b'\2' + row if color_type != 3 else (b'\0' + row) * 2
    deflater = zlib.compressobj(1, zlib.DEFLATED, -15)
    piece = deflater.compress(rows) + deflater.flush(zlib.Z_FULL_FLUSH)
    end = b'\3\0' + struct.pack('>I', zlib.adler32(rows))
    return png_around(color_type, depth, 0, chunk(b'IDAT', b'\x78\1') + chunk(b'IDAT', piece) +
                      chunk(b'IDAT', end))


def lists(value):
    return [plistlib.dumps(value), plistlib.dumps(value, fmt=plistlib.FMT_BINARY)]


def files(pattern):
    """The contents of the small files that match; files beside the project may be missing."""
    found = []
    for path in sorted(glob.glob(os.path.join(os.path.dirname(__file__), '..', pattern))):
        with open(path, 'rb') as file:
            data = file.read()
        if len(data) < 1 << 16:
            found.append(data)
    return found


SETTINGS = {'MODE_INDEX': '1', 'ENABLED': 'TRUE', 'LOCATION_INDEX': '0', 'SHARED_GIF_SPEED': '2',
            'SHARED_GIF_ALPHA': '0.5', 'SHARED_GIF_BLUR': '3', 'SHARED_SCALING_MODE': 'FIT',
            'SAFARI_DIRECTORY': '/var/mobile/Media/Downloads/SHARED_LUMORA_WALLPAPER.gif'}

SEEDS = {
    'gif': files('../shared/gifs/*.gif') + [
        gif(b'GIF89a', (0, 0, 0)), gif(b'GIF89a', (1, 0x40, 9), (0, 0, 12), (2, 0, 1)),
        gif(b'GIF87a', (0, 0, 0), (9, 0, 0))],
    'png': [png(6, 8, bytes(8)), png(2, 8, bytes(6)), png(3, 8, bytes(2)), png(0, 16, bytes(4)),
            png(3, 1, bytes(1)), png(4, 8, bytes(4), interlace=1), own_png(3, 8, bytes(2)),
            own_png(3, 1, b'\x40'), own_png(2, 8, bytes(6)), own_png(6, 8, bytes(8))],
    'property_list': lists({'SHARED_GIF_SPEED': '2.5', 'OTHER': [1, 2.5, True, {'a': b'x'}]}) +
                     [b'\xef\xbb\xbf' + plistlib.dumps({'a': 'b'})],
    'blur': [b'\x05\x03\x02\0' + bytes(range(100))],
    'actions': [bytes([10, *range(first, first + 10)]) + list for first in (1, 11)
                for list in lists(SETTINGS)],
    'control': [bytes([method, 1, kind, 4]) + b'left\0' for method in range(13) for kind in (0, 1)] +
               [bytes([7, 2, 0, 2, 1, 0, 0, 3, 1, 0, 0])],
    'script': files('examples/scenarios/*') + [b'expect locations.shared.speed 1.0\nset "a b" c # d'],
    'durations': lists(['0.100000', '0.050000', '', '-1']) + lists([1, {'a': []}]),
}

if __name__ == '__main__':
    target, directory = sys.argv[1:]
    for number, seed in enumerate(SEEDS[target]):
        with open(os.path.join(directory, f'seed-{number}'), 'wb') as file:
            file.write(seed)
