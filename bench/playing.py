"""Plays a GIF with Lumora and other players, in equal windows on a virtual display."""

import os
import signal
import subprocess
import sys
import tempfile
import time

from measuring import goal, table

SECONDS = 12
SETTLE_SECONDS = 4
WIDTH, HEIGHT = 390, 844
DISPLAY = ':97'


def descendants(pid):
    found = [pid]
    for at in found:
        for task in os.listdir(f'/proc/{at}/task'):
            with open(f'/proc/{at}/task/{task}/children', encoding='ascii') as children:
                found += [int(child) for child in children.read().split()]
    return found


def cpu_seconds(pids):
    ticks = 0
    for pid in pids:
        with open(f'/proc/{pid}/stat', encoding='ascii') as stat:
            fields = stat.read().rsplit(')', 1)[1].split()
        ticks += int(fields[11]) + int(fields[12])
    return ticks / os.sysconf('SC_CLK_TCK')


def resident(pids):
    """Memory in MiB; shared memory is divided among the processes that share it."""
    total = 0
    for pid in pids:
        with open(f'/proc/{pid}/smaps_rollup', encoding='ascii') as rollup:
            total += sum(int(line.split()[1]) for line in rollup if line.startswith('Pss:'))
    return total / 1024


def play(command, environment):
    """Returns CPU seconds per minute and memory in MiB of a program and its descendants."""
    player = subprocess.Popen(command, env=environment, stdin=subprocess.DEVNULL,
                              stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    try:
        time.sleep(SETTLE_SECONDS)
        pids = descendants(player.pid)
        start, before = time.perf_counter(), cpu_seconds(pids)
        time.sleep(SECONDS)
        if player.poll() is not None:
            sys.exit(f'{command[0]} ended by itself')
        span = time.perf_counter() - start
        return (cpu_seconds(pids) - before) / span * 60, resident(pids)
    finally:
        player.send_signal(signal.SIGTERM)
        player.wait(timeout=20)


def bench(program, gif):
    environment = dict(os.environ, DISPLAY=DISPLAY, SDL_VIDEODRIVER='x11')
    screen = subprocess.Popen(['Xvfb', DISPLAY, '-screen', '0', '800x900x24'],
                              stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    time.sleep(1)
    size = f'{WIDTH}x{HEIGHT}'
    try:
        with tempfile.TemporaryDirectory() as root:
            players = {
                'Lumora': [program, '--root', root, 'run', gif, '--display', 'window', '--screen',
                           size],
                'mpv': ['mpv', '--no-config', '--loop=inf', '--vo=x11', '--hwdec=no',
                        f'--geometry={size}', gif],
                'ffplay': ['ffplay', '-loglevel', 'quiet', '-loop', '0', '-x', str(WIDTH), '-y',
                           str(HEIGHT), gif],
            }
            figures = {name: play(command, environment) for name, command in players.items()}
    finally:
        screen.terminate()
        screen.wait()
    cpu, memory = figures['Lumora']
    print(f'## Playing {os.path.basename(gif)} in a window of {size}\n')
    table(['player', 'CPU s per minute', 'times ours', 'MiB', 'times ours'],
          [[name, f'{each[0]:.2f}', f'{each[0] / cpu:.1f}', f'{each[1]:.1f}',
            f'{each[1] / memory:.1f}'] for name, each in figures.items()])
    least_cpu = min(each[0] for name, each in figures.items() if name != 'Lumora') / cpu
    least_memory = min(each[1] for name, each in figures.items() if name != 'Lumora') / memory
    return [goal(f'at most a fifth of the CPU of either: {least_cpu:.1f} times less',
                 least_cpu >= 5),
            goal(f'at most a third of the memory of either: {least_memory:.1f} times less',
                 least_memory >= 3)]
