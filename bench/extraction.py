"""Extracts GIFs to frame caches, compared with ffmpeg writing one PNG per frame."""

import os
import shutil
import subprocess
import sys

import inputs
from measuring import geometric_mean, goal, interleaved, run, table

RUNS = 5
RUNS_ON_ONE_CORE = 3
# In less time than this, the start of a program dominates.
LARGE_SECONDS = 0.1


def emptied(folder):
    shutil.rmtree(folder, ignore_errors=True)
    os.makedirs(folder)
    return folder


ONE_CORE = ['taskset', '--cpu-list', '0']


def lumora(program, gif, folder, prefix=()):
    return run([*prefix, program, 'frames', gif, emptied(folder)])


def ffmpeg(gif, folder, prefix=()):
    return run([*prefix, 'ffmpeg', '-nostdin', '-v', 'error', '-vsync', '0', '-i', gif,
                '-compression_level', '1', os.path.join(emptied(folder), '%d.png')])


def total_size(folder):
    """The size of all frames; linked frames count each time, as they do for ffmpeg."""
    return sum(os.path.getsize(os.path.join(folder, name)) for name in os.listdir(folder)
               if name.endswith('.png'))


def pixels(picture):
    """Straight RGBA as a third library decodes it; transparent pixels are all 0."""
    from PIL import Image
    import itertools
    image = Image.open(picture).convert('RGBA')
    data = image.tobytes()
    if image.getextrema()[3][0] == 255:
        return data
    clear = Image.new('RGBA', image.size)
    mask = image.getchannel('A').point(lambda alpha: 255 if alpha else 0)
    return Image.composite(image, clear, mask).tobytes()


def check_pixels(kind, ours, theirs):
    """Compares the frames of both directories. ffmpeg treats areas that disposal clears and
    frames without a duration differently, so only the corpus tests those."""
    names = sorted((name for name in os.listdir(ours) if name.endswith('.png')),
                   key=lambda name: int(name[:-4].rsplit('_', 1)[1]))
    for number, name in enumerate(names, start=1):
        other = os.path.join(theirs, f'{number}.png')
        if not os.path.exists(other) or pixels(os.path.join(ours, name)) != pixels(other):
            sys.exit(f'{kind}: frame {number} differs from the one of ffmpeg')


def bench(program, files, folder):
    ours, theirs = os.path.join(folder, 'ours'), os.path.join(folder, 'theirs')
    rows, ratios = [], []
    for kind, gif in files.items():
        mine, other = interleaved(RUNS, lambda: lumora(program, gif, ours),
                                  lambda: ffmpeg(gif, theirs))
        check_pixels(kind, ours, theirs)
        alone, other_alone = interleaved(RUNS_ON_ONE_CORE,
                                         lambda: lumora(program, gif, ours, ONE_CORE),
                                         lambda: ffmpeg(gif, theirs, ONE_CORE))
        ratio = {'on one core': other_alone.wall / alone.wall, 'cores': alone.wall / mine.wall,
                 'wall': other.wall / mine.wall, 'cpu': other.cpu / mine.cpu,
                 'bytes': total_size(ours) / total_size(theirs),
                 'memory': mine.memory / other.memory, 'is large': other.wall >= LARGE_SECONDS}
        ratios.append(ratio)
        rows.append([kind, f'{mine.wall * 1000:.0f}', f'{other.wall * 1000:.0f}',
                     f'{ratio["wall"]:.1f}', f'{ratio["cpu"]:.1f}', f'{ratio["bytes"]:.2f}',
                     f'{ratio["memory"]:.2f}', f'{ratio["on one core"]:.1f}',
                     f'{ratio["cores"]:.2f}'])
        print(f'  {kind}', file=sys.stderr, flush=True)

    def mean(figure):
        return geometric_mean(each[figure] for each in ratios)

    rows.append(['geometric mean', '', '', f'{mean("wall"):.1f}', f'{mean("cpu"):.1f}',
                 f'{mean("bytes"):.2f}', f'{mean("memory"):.2f}', f'{mean("on one core"):.1f}',
                 f'{mean("cores"):.2f}'])
    print('## GIF to frame cache, against ffmpeg -compression_level 1\n')
    table(['kind', 'ms', 'ffmpeg ms', 'times as fast', 'CPU', 'bytes', 'memory',
           'on one core', 'all cores, of one'], rows)
    slowest = min((each['wall'] for each in ratios if each['is large']), default=0)
    return [
        goal(f'on average at least 10 times as fast: {mean("wall"):.1f}', mean('wall') >= 10),
        goal(f'on average at most a tenth of the CPU: {mean("cpu"):.1f} times less',
             mean('cpu') >= 10),
        goal(f'no file of more than 0.1 s under 5 times as fast: {slowest:.1f}', slowest >= 5),
        goal(f'on average at most 0.65 of the bytes: {mean("bytes"):.2f}', mean('bytes') <= 0.65),
        goal(f'never more bytes: {max(each["bytes"] for each in ratios):.2f}',
             all(each['bytes'] <= 1 for each in ratios)),
        goal(f'at most 0.25 of the memory: {mean("memory"):.2f}', mean('memory') <= 0.25),
        goal(f'on one core on average at least 10 times as fast: {mean("on one core"):.1f}',
             mean('on one core') >= 10),
        goal(f'on all cores on average at least 1.8 times as fast as on one: {mean("cores"):.2f}',
             mean('cores') >= 1.8),
    ]
