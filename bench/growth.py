"""Measures the cost by input size. Time should grow linearly, memory not with the frames."""

import os

import extraction
import inputs
from measuring import interleaved, table

FRAME_COUNTS = (10, 50, 200, 500, 2000)
CANVASES = ((64, 64), (256, 256), (1024, 1024), (2048, 2048), (3840, 2160))
FILE_MEGABYTES = (0.01, 0.1, 1, 10, 50, 200)


def sub_blocks_end(gif, at):
    while gif[at] != 0:
        at += gif[at] + 1
    return at + 1


def table_size(flags):
    return 3 * (2 << (flags & 7)) if flags & 0x80 else 0


def split(path):
    """Returns the bytes before the first frame, and the bytes of each frame."""
    with open(path, 'rb') as file:
        gif = file.read()
    at = start = 13 + table_size(gif[10])
    head, frames = gif[:at], []
    while gif[at] != 0x3B:
        if gif[at] == 0x21:
            at = sub_blocks_end(gif, at + 2)
        else:
            at = sub_blocks_end(gif, at + 11 + table_size(gif[at + 9]))
            frames.append(gif[start:at])
            start = at
    return head, frames


def write_repeated(path, head, frames, count):
    with open(path, 'wb') as file:
        file.write(head)
        for index in range(count):
            file.write(frames[index % len(frames)])
        file.write(b'\x3B')


def measure(program, gif, folder):
    return interleaved(3, lambda: extraction.lumora(program, gif, folder))[0]


def row(name, units, figures, unit_name):
    return [name, f'{figures.wall * 1000:.0f}', f'{figures.wall * 1e6 / units:.3g} {unit_name}',
            f'{figures.memory / 1024:.1f}']


def bench(program, files, folder):
    os.makedirs(folder, exist_ok=True)
    gif, frames_folder = os.path.join(folder, 'grown.gif'), os.path.join(folder, 'frames')
    header = ['input', 'ms', 'each', 'MiB']

    print('## Growth: frames of 480x270\n')
    head, frames = split(files['cellular automaton'])
    rows = []
    for count in FRAME_COUNTS:
        write_repeated(gif, head, frames, count)
        rows.append(row(f'{count} frames', count, measure(program, gif, frames_folder),
                        'us/frame'))
    table(header, rows)

    print('## Growth: canvas, 6 frames\n')
    rows = []
    for width, height in CANVASES:
        inputs.film(f'mandelbrot=s={width}x{height}:r=12:maxiter=100', 0.5, gif)
        rows.append(row(f'{width}x{height}', 6 * width * height / 1e6,
                        measure(program, gif, frames_folder), 'us/Mpixel'))
    table(header, rows)

    print('## Growth: file\n')
    head, frames = split(files['zoom, dithered'])
    small_head, small_frames = split(files['cellular automaton'])
    rows = []
    for megabytes in FILE_MEGABYTES:
        used_head, used = (small_head, small_frames) if megabytes < 1 else (head, frames)
        size = sum(map(len, used)) / len(used)
        write_repeated(gif, used_head, used, max(1, round(megabytes * 1e6 / size)))
        actual = os.path.getsize(gif) / 1e6
        rows.append(row(f'{actual:.2f} MB', actual, measure(program, gif, frames_folder),
                        'us/MB'))
    table(header, rows)
    os.remove(gif)
    return []
