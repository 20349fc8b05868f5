"""Injects random, repeatable failures into the real programs.

usage: stress.py DIRECTORY-OF-THE-PROGRAMS [--rounds N] [--seed N] [PHASE ...]

Phases: kills, settings, burst, crowd, frames, refreshes, limits, pauses, bus, full-disk, read-only.
Part of pauses needs Xvfb; full-disk and read-only mount file systems, in a user namespace if necessary.
What is not available is skipped.
"""
import argparse
import contextlib
import json
import os
import plistlib
import random
import resource
import shutil
import signal
import subprocess
import sys
import tempfile
import time

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), '../fixture'))
import gif_writer

PREFERENCES = 'var/mobile/Library/Preferences/com.brightfen.lumorapreferences.plist'
LIBRARY = 'var/mobile/Library/Lumora'
CONTROL = 'com.brightfen.lumora.'
NOTIFICATIONS = [CONTROL + name for name in (
    'removeGIFFromAllWallpapers', 'wallpaperNeedsUpdating', 'updateWallpaper',
    'removeSharedGIFView', 'removeLockscreenGIFView', 'removeHomescreenGIFView',
    'updateAnimating')] + ['kLWGIFViewGIFSpeedNeedsUpdating', 'kLWGIFViewGIFAlphaNeedsUpdating',
                           'kLWGIFViewGIFBlurNeedsUpdating',
                           'kLWGIFViewNeedsToRemoveUnneededViewNotification']
USER_ACTIONS = [['lock'], ['unlock'], ['home'], ['app', 'open'], ['app', 'close'],
                ['screen', 'off'], ['screen', 'on'], ['rotate', 'left'], ['rotate', 'right'],
                ['rotate', 'portrait']]


def noisy_gif(frames, side, pick):
    """A square GIF with random colors and pixels in every frame."""
    size = (side, side)
    images = []
    for _ in range(frames):
        colors = bytes(pick.randrange(256) for _ in range(3 * 128))
        indices = bytes(pick.randrange(128) for _ in range(side * side))
        images.append(gif_writer.image(size, gif_writer.lzw(indices), colors, delay=5))
    return gif_writer.gif(size, images)


def contents(path):
    with open(path, 'rb') as file:
        return file.read()


class Device:
    """A device in a temporary directory, and two GIFs that are set in turn."""

    def __init__(self, programs, seed):
        self.program = os.path.join(programs, 'lumora')
        self.pick = random.Random(seed)
        self.folder = tempfile.mkdtemp(prefix='lumora-stress-')
        self.root = os.path.join(self.folder, 'device')
        self.run = None
        self.gifs = []
        self.caches = []
        for name, frames, side in (('one', 16, 160), ('other', 7, 64)):
            self.gifs.append(os.path.join(self.folder, name + '.gif'))
            with open(self.gifs[-1], 'wb') as file:
                file.write(noisy_gif(frames, side, self.pick))
            self.caches.append(os.path.join(self.folder, 'Wallpaper_both-' + name))
            self.ok('frames', self.gifs[-1], self.caches[-1])

    def close(self):
        self.stop()
        shutil.rmtree(self.folder)

    def lumora(self, *words):
        return subprocess.run([self.program, '--root', self.root, *words], capture_output=True,
                              text=True, timeout=120)

    def ok(self, *words):
        done = self.lumora(*words)
        assert done.returncode == 0, (words, done.returncode, done.stderr)
        return done.stdout

    def begin(self, *words):
        return subprocess.Popen([self.program, '--root', self.root, *words],
                                stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)

    def shared(self):
        return json.loads(self.ok('status', '--json'))['locations']['shared']

    def start(self, *words, display='headless', environment=None):
        self.run = subprocess.Popen(
            [self.program, 'run', '--root', self.root, '--display', display, *words],
            stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True, env=environment)
        self.ok('wait')

    def stop(self):
        """Fails if the home screen does, for example by a sanitizer's report at its end."""
        if self.run is None:
            return
        self.run.terminate()
        _, errors = self.run.communicate(timeout=60)
        assert self.run.returncode == 0, (self.run.returncode, errors)
        self.run = None

    def pixels(self, picture):
        return subprocess.run([self.program, 'frames', '--raw', picture], capture_output=True,
                              check=True).stdout

    def child(self, name):
        with open(f'/proc/{self.run.pid}/task/{self.run.pid}/children') as file:
            for child in file.read().split():
                with open(f'/proc/{child}/comm') as comm:
                    if comm.read().strip() == name:
                        return int(child)
        raise AssertionError(name + ' is not running')

    def kill(self, name):
        os.kill(self.child(name), signal.SIGKILL)
        _, errors = self.run.communicate(timeout=60)
        assert self.run.returncode == 1, (self.run.returncode, errors)
        self.run = None

    def memory(self):
        """Resident memory of the home screen in KiB."""
        with open(f'/proc/{self.child("springboard")}/status') as file:
            return int(next(line.split()[1] for line in file if line.startswith('VmRSS')))

    def is_sanitized(self):
        with open(f'/proc/{self.child("springboard")}/maps') as file:
            return 'san.so' in file.read()

    def threads(self):
        """The state, CPU time, system call and backtrace of each thread of the home screen."""
        pid = self.child('springboard')
        lines = []
        for thread in os.listdir(f'/proc/{pid}/task'):
            with open(f'/proc/{pid}/task/{thread}/stat') as stat, \
                    open(f'/proc/{pid}/task/{thread}/syscall') as call:
                fields = stat.read().rpartition(')')[2].split()
                lines.append(f'{thread}: {fields[0]}, {fields[11]} ticks, {call.read().strip()}')
        if shutil.which('gdb'):
            trace = subprocess.run(['gdb', '-p', str(pid), '-batch', '-ex', 'thread apply all bt'],
                                   capture_output=True, text=True)
            lines.append(trace.stdout)
        return '\n'.join(lines)

    def path(self, name):
        return os.path.join(self.root, name)

    def check_settings(self):
        if os.path.exists(self.path(PREFERENCES)):
            with open(self.path(PREFERENCES), 'rb') as file:
                assert isinstance(plistlib.load(file), dict)

    def check_wallpaper(self, number):
        """Compares the cache with what the same GIF gives without failures."""
        cache = self.path(LIBRARY + '/Wallpaper_both')
        base = os.path.basename(self.caches[number])
        expected = sorted(os.listdir(self.caches[number]))
        assert sorted(name.replace('Wallpaper_both', base) for name in os.listdir(cache)) == expected
        for name in expected:
            files = (os.path.join(self.caches[number], name),
                     os.path.join(cache, name.replace(base, 'Wallpaper_both')))
            right, found = (self.pixels(file) if name.endswith('.png') else contents(file)
                            for file in files)
            assert right == found, name

    def choose(self, number):
        self.ok('put', 'SHARED_GIF_BLUR', '0')
        self.ok('set', 'shared', self.gifs[number])
        self.check_wallpaper(number)


def kills(device, rounds):
    """Kills the home screen during an action; the next one completes what is missing."""
    actions = [lambda number: device.begin('set', 'shared', device.gifs[number]),
               lambda number: device.begin('blur', 'shared', str(number + 1)),
               lambda number: device.begin('remove', 'shared'),
               lambda number: device.begin('mode', 'separate'),
               lambda number: device.begin('rotate', 'left')]
    device.start()
    device.choose(0)
    leftovers = 0
    for each in range(rounds):
        number = each % 2
        # Setting a GIF comes most often, because it changes the most.
        action = actions[device.pick.choice((0, 0, 0, 1, 1, 2, 3, 4))](number)
        time.sleep(device.pick.uniform(0, 0.15))
        device.kill('springboard')
        action.wait(120)
        device.check_settings()
        device.start()
        device.choose(number)
        leftovers = sum(name.endswith('.tmp') for _, _, names in os.walk(device.root)
                        for name in names)
    device.stop()
    return f'{leftovers} unfinished files left'


def damage(device):
    """Changes the settings file as another program might."""
    path = device.path(PREFERENCES)
    kind = device.pick.randrange(6)
    sound = {'MODE_INDEX': device.pick.choice('01'), 'WALLPAPER_SET': 'TRUE',
             'SHARED_GIF_SPEED': device.pick.choice(('1', '0', '-1', 'fast', '1e999'))}
    contents = [plistlib.dumps(sound), plistlib.dumps(sound, fmt=plistlib.FMT_BINARY),
                plistlib.dumps(sound)[:device.pick.randrange(200)], device.pick.randbytes(300),
                plistlib.dumps({'MODE_INDEX': 1, 'ENABLED': True}), b''][kind]
    if device.pick.random() < 0.1 and os.path.exists(path):
        os.remove(path)
    elif device.pick.random() < 0.5:
        with open(path, 'wb') as file:
            file.write(contents)
    else:
        with open(path + '.new', 'wb') as file:
            file.write(contents)
        os.rename(path + '.new', path)


def settings(device, rounds):
    """Replaces, deletes and damages the settings file during playback."""
    device.start()
    device.choose(0)
    before = device.memory()
    waiting = []
    for each in range(10 * rounds):
        damage(device)
        waiting.append(device.begin('post', device.pick.choice(NOTIFICATIONS[2:])))
        if each % 10 == 9:
            waiting.append(device.begin(*device.pick.choice(USER_ACTIONS)))
        if len(waiting) > 8:
            waiting.pop(0).wait(120)
    for one in waiting:
        one.wait(120)
    return finish(device, before)


def burst(device, rounds):
    """Posts notifications in random order while the screen is locked, unlocked and rotated."""
    device.start()
    device.choose(0)
    before = device.memory()
    for _ in range(max(rounds // 20, 1)):
        posts = [device.begin('post', device.pick.choice(NOTIFICATIONS)) for _ in range(200)]
        actions = [device.begin(*device.pick.choice(USER_ACTIONS)) for _ in range(20)]
        for one in posts + actions:
            one.wait(120)
    return finish(device, before)


def crowd(device, rounds):
    """Runs hundreds of commands at the same time; each must succeed."""
    device.start()
    device.choose(0)
    before = device.memory()
    for _ in range(max(rounds // 20, 1)):
        commands = [device.begin(*device.pick.choice((['status'], ['lock'], ['home'])))
                    for _ in range(300)]
        codes = [command.wait(120) for command in commands]
        assert codes == [0] * len(codes), codes
    return finish(device, before)


def frames(device, rounds):
    """Damages frames and their delay list during playback."""
    device.start()
    device.choose(0)
    before = device.memory()
    device.ok('speed', 'shared', '100')
    cache = device.path(LIBRARY + '/Wallpaper_both')
    for _ in range(rounds):
        path = os.path.join(cache, device.pick.choice(os.listdir(cache)))
        damaged = bytearray(contents(path))
        if device.pick.random() < 0.3:
            del damaged[device.pick.randrange(len(damaged) or 1):]
        for _ in range(device.pick.randrange(20)):
            if damaged:
                damaged[device.pick.randrange(len(damaged))] = device.pick.randrange(256)
        with open(path, 'r+b' if device.pick.random() < 0.5 else 'wb') as file:
            file.write(damaged)
        time.sleep(0.02)
        device.shared()
    return finish(device, before)


def refreshes(device, rounds):
    """Plays many refreshes on a manual clock; the memory must not grow."""
    device.start('--clock', 'manual')
    device.choose(0)
    device.ok('advance', '20')
    before = device.memory()
    for _ in range(max(rounds // 10, 1)):
        device.ok('advance', '100')
    growth = device.memory() - before
    assert device.shared()['playing']
    # Sanitizers do not reuse freed memory at once.
    assert growth < (400 << 10 if device.is_sanitized() else 8 << 10), growth
    device.stop()
    return f'{growth} KiB more after {max(rounds // 10, 1) * 6000} refreshes'


def limits(device, rounds):
    """Starts with few descriptors or little memory, which must succeed or print an error."""
    started = 0
    for _ in range(max(rounds // 4, 3)):
        kind, most = device.pick.choice(((resource.RLIMIT_NOFILE, device.pick.randrange(5, 40)),
                                         (resource.RLIMIT_AS, device.pick.randrange(20, 300) << 20)))
        done = subprocess.run([device.program, 'run', '--root', device.root, '--display', 'headless',
                               '--for', '0.1'], capture_output=True, text=True, timeout=120,
                              preexec_fn=lambda: resource.setrlimit(kind, (most, most)))
        if 'Sanitizer' not in done.stderr:  # A sanitizer needs more.
            assert done.returncode in (0, 1, 127), (kind, most, done)
            assert done.returncode == 0 or done.stderr.strip(), (kind, most, done)
        started += done.returncode == 0
    device.start()
    device.choose(0)
    device.stop()
    return f'{started} started'


@contextlib.contextmanager
def x_server():
    """Yields the display of an X server; None without Xvfb."""
    if not shutil.which('Xvfb'):
        yield None
        return
    reading, writing = os.pipe()
    server = subprocess.Popen(['Xvfb', '-displayfd', str(writing), '-screen', '0', '640x960x24',
                               '-nolisten', 'tcp'], pass_fds=[writing], stderr=subprocess.DEVNULL)
    os.close(writing)
    with os.fdopen(reading) as file:
        yield ':' + file.readline().strip()
    server.terminate()
    server.wait(60)


def lost_pauses(device, count, advances):
    """Hides the wallpaper at random moments of a cycle. Returns how often it kept playing."""
    lost = 0
    for _ in range(count):
        action = device.begin('advance', '1') if advances else None
        time.sleep(device.pick.uniform(0, 0.03))
        device.ok('app', 'open')
        if action:
            action.wait(120)
            device.ok('advance', '0.1')
        shown = [device.shared() for _ in range(2)]
        lost += shown[0] != shown[1] or shown[0]['playing']
        device.ok('app', 'close')
    return lost


def pauses(device, rounds):
    """Pauses must also work at the end of a cycle, where a view briefly has no display link."""
    picture = os.path.join(device.folder, 'plain.gif')
    with x_server() as display:
        for kind, size, *words in (('headless', (3500, 3500)),
                                   ('headless', (1080, 1920), '--clock', 'manual'),
                                   ('window', (1080, 1920), '--screen', '640x960')):
            if kind == 'window' and display is None:
                continue
            with open(picture, 'wb') as file:
                file.write(gif_writer.plain_gif([(255, 0, 0)], size, delay=2))
            device.start(*words, display=kind,
                         environment=dict(os.environ, DISPLAY=display or '', HOME=device.folder))
            device.ok('set', 'shared', picture)
            lost = lost_pauses(device, max(rounds * 8 // 10, 5), 'manual' in words)
            assert lost == 0, (kind, size, lost)
            device.stop()
    return '' if display else 'without a window'


def finish(device, before):
    """Checks that a GIF can still be set, and that the memory has not grown permanently."""
    if os.path.exists(device.path(PREFERENCES)):
        os.remove(device.path(PREFERENCES))
    device.ok('home')
    device.ok('rotate', 'portrait')
    device.choose(1)
    after = device.memory()
    device.stop()
    growth = (after - before) // 1024
    # Sanitizers do not reuse freed memory at once.
    assert growth < 400, growth
    return f'memory {before // 1024} MiB before, {after // 1024} MiB after'


def bus(device, rounds):
    """Kills the message bus; the next start creates a new one."""
    for each in range(max(rounds // 10, 1)):
        device.start()
        device.choose(each % 2)
        action = device.begin('set', 'shared', device.gifs[1 - each % 2])
        time.sleep(device.pick.uniform(0, 0.1))
        device.kill('dbus-daemon')
        action.wait(120)
        device.check_settings()
    device.start()
    device.choose(0)
    device.stop()
    return ''


def full_disk(device, rounds):
    """Changes settings and wallpapers on a nearly full disk, then with enough space."""
    os.makedirs(device.root, exist_ok=True)
    subprocess.run(['mount', '-t', 'tmpfs', '-o', 'size=4m', 'none', device.root], check=True)
    device.start()
    device.choose(0)
    ballast = device.path('ballast')
    failures = 0
    for each in range(rounds):
        with open(ballast, 'wb', buffering=0) as file:
            try:
                while True:
                    file.write(b'x' * 4096)
            except OSError:
                pass
            file.truncate(max(os.path.getsize(ballast) - device.pick.randrange(400000), 0))
        failed = device.lumora('set', 'shared', device.gifs[each % 2], '--timeout', '30')
        assert failed.returncode in (0, 1), failed
        failures += failed.returncode
        device.lumora('blur', 'shared', '2')
        device.lumora('put', 'SHARED_GIF_SPEED', '2')
        device.check_settings()
        os.remove(ballast)
        device.choose(each % 2)
    device.stop()
    subprocess.run(['umount', device.root], check=True)
    return f'{failures} of {rounds} ran out of space'


def read_only(device, rounds):
    """Makes the library's directory read-only for a while."""
    device.start()
    device.choose(0)
    library = device.path(LIBRARY)
    subprocess.run(['mount', '--bind', library, library], check=True)
    for _ in range(max(rounds // 10, 1)):
        subprocess.run(['mount', '-o', 'remount,ro,bind', library], check=True)
        failed = device.lumora('set', 'shared', device.gifs[1], '--timeout', '30')
        assert failed.returncode == 1 and 'writable' in failed.stderr, failed
        device.ok('blur', 'shared', '2')
        device.ok('post', CONTROL + 'removeSharedGIFView')
        device.check_settings()
        subprocess.run(['mount', '-o', 'remount,rw,bind', library], check=True)
        device.choose(0)
    # A home screen that plays opens frames now and then, which makes the mount busy.
    device.stop()
    subprocess.run(['umount', library], check=True)
    return ''


PHASES = {'kills': kills, 'settings': settings, 'burst': burst, 'crowd': crowd, 'frames': frames,
          'refreshes': refreshes, 'limits': limits, 'pauses': pauses, 'bus': bus,
          'full-disk': full_disk, 'read-only': read_only}
MOUNTING = ('full-disk', 'read-only')


def may_mount():
    return subprocess.run(['unshare', '-rm', 'true'], stderr=subprocess.DEVNULL).returncode == 0


def play(arguments, name):
    if name in MOUNTING and not arguments.mounts:
        if not may_mount():
            print(f'{name}: skipped, cannot mount file systems here', flush=True)
            return
        again = [sys.executable, '-B', *sys.argv[:1], arguments.programs, '--mounts', '--rounds',
                 str(arguments.rounds), '--seed', str(arguments.seed), name]
        subprocess.run(['unshare', '-rm', *again], check=True)
        return
    begun = time.monotonic()
    device = Device(arguments.programs, arguments.seed)
    try:
        result = PHASES[name](device, arguments.rounds)
    except BaseException:
        print(f'{name}: failed with --seed {arguments.seed}', flush=True)
        if device.run is not None and device.run.poll() is None:
            print(device.threads(), flush=True)
            os.kill(device.child('springboard'), signal.SIGKILL)
            print(device.run.communicate(timeout=60)[1], flush=True)
        raise
    device.close()
    print(f'{name}: passed, {time.monotonic() - begun:.0f} s {result}', flush=True)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument('programs')
    parser.add_argument('--rounds', type=int, default=100)
    parser.add_argument('--seed', type=int, default=1)
    parser.add_argument('--mounts', action='store_true', help=argparse.SUPPRESS)
    parser.add_argument('phases', nargs='*')
    arguments = parser.parse_intermixed_args()
    for name in arguments.phases or PHASES:
        play(arguments, name)


if __name__ == '__main__':
    main()
