"""Runs the named benchmarks, or all, and counts the goals that hold."""

import os
import shutil
import subprocess
import sys

import extraction
import growth
import inputs
import playing

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
PROGRAMS = os.path.join(ROOT, 'build', 'bench', 'bin')
LUMORA = os.path.join(PROGRAMS, 'lumora')
INPUTS = os.path.join(ROOT, 'build', 'bench', 'inputs')
CORPUS = os.path.join(ROOT, '..', 'shared', 'gifs')
# In memory if possible, because the speed of the disk is not measured.
WORK = os.path.join('/dev/shm' if os.path.isdir('/dev/shm') else '/tmp', f'lumora-bench-{os.getpid()}')


# In this GIF only the middle moves.
STANDS_STILL = 'moving, transparent'


def peers(*words):
    """Runs bench-peers and prints its output. Returns True for each goal that holds."""
    done = subprocess.run([os.path.join(PROGRAMS, 'bench-peers'), *words], check=True,
                          stdout=subprocess.PIPE, text=True)
    print(done.stdout)
    lines = done.stdout.splitlines()
    return [line.startswith('holds') for line in lines if line[:6] in ('holds ', 'MISSED')]


def bench_extraction():
    return extraction.bench(LUMORA, inputs.make(INPUTS, CORPUS), os.path.join(WORK, 'frames'))


def bench_loading():
    """Loads real frames: our file and ffmpeg's of the same frame, and our file of the one before."""
    goals = []
    files = inputs.make(INPUTS, CORPUS, ['zoom, dithered', 'test card', STANDS_STILL])
    for kind, gif in files.items():
        ours, theirs = os.path.join(WORK, 'ours'), os.path.join(WORK, 'theirs')
        extraction.lumora(LUMORA, gif, ours)
        extraction.ffmpeg(gif, theirs)
        frame = 10
        goals += peers('loading', kind, os.path.join(ours, f'ours_{frame}.png'),
                       os.path.join(theirs, f'{frame + 1}.png'),
                       os.path.join(ours, f'ours_{frame - 1}.png'),
                       *(['stands-still'] if kind == STANDS_STILL else []))
    return goals


def bench_playing():
    sample = os.path.join(ROOT, 'examples', 'evening.gif')
    made = inputs.make(INPUTS, CORPUS, ['zoom, dithered', 'test card', STANDS_STILL,
                                        'palette per frame', 'cellular automaton', 'old film'])
    return (playing.bench(LUMORA, {'the sample': sample, **made})
            + playing.bench_start_and_pause(LUMORA, sample))


def bench_growth():
    files = inputs.make(INPUTS, CORPUS, ['zoom, dithered', 'cellular automaton'])
    return growth.bench(LUMORA, files, os.path.join(WORK, 'growth'))


def bench_parts():
    subprocess.run([os.path.join(PROGRAMS, 'bench-parts')], check=True)
    return []


BENCHES = {
    'extraction': bench_extraction,
    'loading': bench_loading,
    'blur': lambda: peers('blur'),
    'playing': bench_playing,
    'growth': bench_growth,
    'parts': bench_parts,
}


def main():
    names = sys.argv[1:] or list(BENCHES)
    unknown = [name for name in names if name not in BENCHES]
    if unknown:
        sys.exit(f'bench: unknown benchmark {unknown[0]}; choose from {", ".join(BENCHES)}')
    goals = []
    try:
        for name in names:
            goals += BENCHES[name]()
            print(flush=True)
    finally:
        shutil.rmtree(WORK, ignore_errors=True)
    print(f'{sum(goals)} of {len(goals)} goals hold')


if __name__ == '__main__':
    main()
