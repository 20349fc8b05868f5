"""Makes the GIFs that the benchmarks read: ten kinds, written by other programs.

They are the same every time. Two are real films from the corpus, left out if it is missing."""

import os
import subprocess

FFMPEG = ['ffmpeg', '-nostdin', '-v', 'error', '-y']


def ffmpeg(*arguments):
    subprocess.run([*FFMPEG, *arguments], check=True)


def film(source, seconds, target, dither='sierra2_4a', palette='full', extra=''):
    """A lavfi source as a GIF with one palette, or with one for each frame ('single'). A gradient
    without colors has random ones, transparent ones among them, whatever its seed."""
    new = 1 if palette == 'single' else 0
    graph = (f'{extra}split[a][b];[a]palettegen=stats_mode={palette}[p];'
             f'[b][p]paletteuse=dither={dither}:new={new}')
    # Limits the source, which is endless: the palette is complete only after its end.
    ffmpeg('-f', 'lavfi', '-t', str(seconds), '-i', source, '-filter_complex', graph, target)


def zoom(target):
    film('mandelbrot=s=1170x2532:r=12:maxiter=200', 1.7, target)


def card(target):
    film('testsrc2=s=1170x2532:r=12', 2.5, target, dither='none')


def gradients(target):
    film('gradients=s=1170x2532:r=12:seed=3:speed=0.05:c0=red:c1=blue:nb_colors=2:x0=0:y0=0:'
         'x1=1170:y1=2532', 2, target)


def moving(target):
    film('color=c=black@0:s=1170x2532:r=12,format=rgba[sky];'
         'gradients=s=500x800:r=12:seed=5:speed=0.05:c0=orange:c1=navy:nb_colors=2,'
         'format=rgba[ball];'
         '[sky][ball]overlay=x=t*250:y=t*500:format=auto', 2.5, target)


def palettes(target):
    film('mandelbrot=s=540x960:r=12:maxiter=200:start_scale=1.5', 3, target, palette='single')


def optimized(target):
    palettes(target + '.plain.gif')
    subprocess.run(['gifsicle', '--no-warnings', '-O3', target + '.plain.gif', '-o', target],
                   check=True)
    os.remove(target + '.plain.gif')


def life(target):
    film('life=s=480x270:r=25:seed=7:ratio=0.3:mold=20:life_color=#44ff88:death_color=#aa2244:'
         'mold_color=#221133', 4.8, target, dither='none')


def colorful(target):
    """Two halves, each with its own palette: 512 colors on the canvas."""
    count = 24
    halves = [target + '.left.gif', target + '.right.gif']
    film('mandelbrot=s=270x960:r=12:maxiter=200', count / 12, halves[0])
    film('gradients=s=270x960:r=12:seed=9:speed=0.05:c0=green:c1=white:nb_colors=2', count / 12,
         halves[1])
    frames = []
    for index in range(count):
        frames += ['--delay', '0', '--position', '0,0', halves[0], f'#{index}',
                   '--delay', '8', '--position', '270,0', halves[1], f'#{index}']
    subprocess.run(['gifsicle', '--no-warnings', '--unoptimize', '--merge', '--logical-screen',
                    '540x960', *frames, '-o', target], check=True)
    for half in halves:
        os.remove(half)


MADE = {
    'zoom, dithered': zoom,
    'test card': card,
    'gradients': gradients,
    'moving, transparent': moving,
    'palette per frame': palettes,
    'optimized by gifsicle': optimized,
    'cellular automaton': life,
    'more than 256 colors': colorful,
}
FROM_CORPUS = {
    'old film': 'wuffs__muybridge.gif',
    'small film': 'gifdecoder__derpy_cat.gif',
}


def file_of(kind):
    return kind.replace(' ', '-').replace(',', '') + '.gif'


def make(folder, corpus, kinds=None):
    """Makes the named kinds, or all. Returns a dictionary from kind to file."""
    os.makedirs(folder, exist_ok=True)
    files = {}
    for kind, maker in MADE.items():
        if kinds is not None and kind not in kinds:
            continue
        files[kind] = os.path.join(folder, file_of(kind))
        if not os.path.exists(files[kind]):
            print(f'Making {kind}', flush=True)
            unfinished = files[kind] + '.new.gif'
            maker(unfinished)
            os.replace(unfinished, files[kind])
    for kind, name in FROM_CORPUS.items():
        path = os.path.join(corpus, name)
        if (kinds is None or kind in kinds) and os.path.exists(path):
            files[kind] = path
    return files
