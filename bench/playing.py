"""Plays GIFs with Lumora and other players on a virtual display, in a window and on the desktop."""

import os
import signal
import statistics
import subprocess
import sys
import tempfile
import time

from measuring import geometric_mean, goal, table

# The X server must be idle before a player starts, and a player before it is measured.
SETTLE_SECONDS = 1
SECONDS = 12
# Long enough for the clock of the window to move on once.
SECONDS_OF_WINDOW = 60
STILL_SECONDS = 5
SHOWING_SECONDS = 0.1
STARTS = 5
SCREEN = (1920, 1080)
SIZES = {'window': (390, 844), 'desktop': SCREEN}


def descendants(pid):
    found = [pid]
    for at in found:
        for task in os.listdir(f'/proc/{at}/task'):
            with open(f'/proc/{at}/task/{task}/children', encoding='ascii') as children:
                found += [int(child) for child in children.read().split()]
    return found


def cpu_seconds(pids):
    """The time of all threads that still run, to the nanosecond."""
    total = 0
    for pid in pids:
        for task in os.listdir(f'/proc/{pid}/task'):
            with open(f'/proc/{pid}/task/{task}/schedstat', encoding='ascii') as stat:
                total += int(stat.read().split()[0])
    return total / 1e9


def wake_ups(pids):
    total = 0
    for pid in pids:
        for task in os.listdir(f'/proc/{pid}/task'):
            with open(f'/proc/{pid}/task/{task}/status', encoding='ascii') as status:
                total += sum(int(line.split()[1]) for line in status
                             if line.startswith('voluntary_ctxt_switches'))
    return total


def resident(pids):
    """Memory in MiB; shared memory is divided among the processes that share it."""
    total = 0
    for pid in pids:
        with open(f'/proc/{pid}/smaps_rollup', encoding='ascii') as rollup:
            total += sum(int(line.split()[1]) for line in rollup if line.startswith('Pss:'))
    return total / 1024


class Display:
    """A virtual screen of its own for one player."""

    def __enter__(self):
        reading, writing = os.pipe()
        self.server = subprocess.Popen(
            ['Xvfb', '-displayfd', str(writing), '-nolisten', 'tcp', '-screen', '0',
             f'{SCREEN[0]}x{SCREEN[1]}x24'], pass_fds=[writing], stderr=subprocess.DEVNULL)
        os.close(writing)
        with os.fdopen(reading) as name:
            number = name.readline().strip()
        self.environment = dict(os.environ, DISPLAY=f':{number}', SDL_VIDEODRIVER='x11')
        self.environment.pop('WAYLAND_DISPLAY', None)
        time.sleep(SETTLE_SECONDS)
        return self

    def __exit__(self, *_):
        self.server.terminate()
        self.server.wait()


def play(command, seconds_per_round, seconds):
    """Returns CPU seconds a minute in the first round, with the start, and later; the memory in MiB
    after the second round and at the end; and how often the player woke up in a second. The CPU
    time of the X server is counted."""
    with Display() as display:
        idle = cpu_seconds([display.server.pid])
        start = time.perf_counter()
        player = subprocess.Popen(command, env=display.environment, stdin=subprocess.DEVNULL,
                                  stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        try:
            def used():
                return cpu_seconds([display.server.pid, *descendants(player.pid)])

            time.sleep(seconds_per_round)
            first = (used() - idle) / (time.perf_counter() - start) * 60
            time.sleep(seconds_per_round + SETTLE_SECONDS)
            pids = descendants(player.pid)
            early = resident(pids)
            begun, before, awake = time.perf_counter(), used(), wake_ups(pids)
            time.sleep(seconds)
            if player.poll() is not None:
                sys.exit(f'{command[0]} ended by itself')
            span = time.perf_counter() - begun
            return {'first': first, 'later': (used() - before) / span * 60, 'early memory': early,
                    'memory': resident(pids), 'wake-ups': (wake_ups(pids) - awake) / span}
        finally:
            player.send_signal(signal.SIGTERM)
            player.wait(timeout=20)


def players(program, root, gif, display):
    width, height = SIZES[display]
    lumora = [program, '--root', root, 'run', '--display', display]
    if display == 'window':
        lumora += ['--screen', f'{width}x{height}', '--keys', 'off']
    return {
        'Lumora': lumora,
        'mpv': ['mpv', '--no-config', '--loop=inf', '--vo=x11', '--hwdec=no', '--no-border',
                f'--geometry={width}x{height}', gif],
        'ffplay': ['ffplay', '-loglevel', 'quiet', '-loop', '0', '-noborder', '-x', str(width),
                   '-y', str(height), gif],
    }


def seconds_and_frames(gif):
    from PIL import Image
    with Image.open(gif) as image:
        milliseconds = 0
        for frame in range(image.n_frames):
            image.seek(frame)
            milliseconds += image.info.get('duration', 0) or 100
        return milliseconds / 1000, image.n_frames


def start_and_pause(program, root):
    """Returns the CPU time until the wallpaper is shown on the desktop, in ms, and how often the
    programs wake up in STILL_SECONDS while it is paused. The frames must have been made."""
    with Display() as display:
        run = subprocess.Popen([program, '--root', root, 'run', '--display', 'desktop'],
                               env=display.environment, stdout=subprocess.DEVNULL)
        try:
            subprocess.run([program, '--root', root, 'wait'], check=True)
            # The wallpaper is shown at the first refresh after that.
            time.sleep(SHOWING_SECONDS)
            start = cpu_seconds(descendants(run.pid)) * 1000
            subprocess.run([program, '--root', root, 'pause'], check=True)
            time.sleep(SETTLE_SECONDS)
            pids = descendants(run.pid)
            before = wake_ups(pids)
            time.sleep(STILL_SECONDS)
            return start, wake_ups(pids) - before
        finally:
            run.terminate()
            run.wait(timeout=20)


def bench(program, gifs):
    """gifs: a dictionary from a kind to the file."""
    rows, ratios = [], []
    for kind, gif in gifs.items():
        seconds, frames = seconds_and_frames(gif)
        with tempfile.TemporaryDirectory() as root:
            subprocess.run([program, '--root', root, 'set', gif], check=True,
                           stdout=subprocess.DEVNULL)
            for display in SIZES:
                figures = {
                    name: play(command, seconds, SECONDS_OF_WINDOW
                               if (name, display) == ('Lumora', 'window') else SECONDS)
                    for name, command in players(program, root, gif, display).items()}
                ours = figures.pop('Lumora')
                least = {what: min(each[what] for each in figures.values()) for what in ours}
                ratios.append({
                    'later': least['later'] / ours['later'],
                    'first': least['first'] / ours['first'],
                    'memory': ours['memory'] / least['memory'],
                    'growth': ours['memory'] - ours['early memory'],
                    'wake-ups': ours['wake-ups'] / (frames / seconds)})
                rows.append([kind, display, f'{ours["later"]:.2f}',
                             *(f'{each["later"]:.2f}' for each in figures.values()),
                             f'{ratios[-1]["later"]:.1f}', f'{ratios[-1]["first"]:.1f}',
                             f'{ours["memory"]:.0f}', f'{ratios[-1]["memory"]:.2f}',
                             f'{ratios[-1]["wake-ups"]:.1f}'])
                print(f'  {kind}, {display}', file=sys.stderr, flush=True)
    print('## Playing: CPU seconds a minute with that of the X server, and memory\n')
    table(['GIF', 'display', 'Lumora', 'mpv', 'ffplay', 'times less', 'in the first round', 'MiB',
           'of the smaller', 'wake-ups a frame'], rows)

    def every(what):
        return [each[what] for each in ratios]

    print(f'In the geometric mean {geometric_mean(every("later")):.1f} times less, in the first '
          f'round {geometric_mean(every("first")):.1f} times.\n')
    return [
        goal(f'at most a tenth of the CPU of either: {min(every("later")):.1f} to '
             f'{max(every("later")):.1f} times less', min(every('later')) >= 10),
        goal(f'in the first round at most a quarter: {min(every("first")):.1f} to '
             f'{max(every("first")):.1f} times less', min(every('first')) >= 4),
        goal(f'in the first round never more: {min(every("first")):.1f}', min(every('first')) >= 1),
        goal(f'at most half of the memory of either: {max(every("memory")):.2f}',
             max(every('memory')) <= 0.5),
        goal(f'no more memory after the second round: {max(every("growth")):.1f} MiB',
             max(every('growth')) <= 1),
        goal(f'no more wake-ups than frames: {max(every("wake-ups")):.1f} a frame',
             max(every('wake-ups')) <= 1),
    ]


def bench_start_and_pause(program, gif):
    with tempfile.TemporaryDirectory() as root:
        subprocess.run([program, '--root', root, 'set', gif], check=True,
                       stdout=subprocess.DEVNULL)
        starts, counts = zip(*(start_and_pause(program, root) for _ in range(STARTS)))
    start = statistics.median(starts)
    return [goal(f'at most 60 ms of CPU until the wallpaper is shown: {start:.0f}', start <= 60),
            goal(f'no wake-ups while paused: {max(counts)} in {STILL_SECONDS} s', max(counts) == 0)]
