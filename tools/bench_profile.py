"""Where the time of a row of bench's table goes: the program is sampled by perf while it runs the row's job again and again, and
the samples that fall into the job's own times are counted by module and by procedure."""
import bisect
import collections
import os
import re
import subprocess
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
PREFIX = {True: 'i686-w64-mingw32-', False: 'x86_64-w64-mingw32-'}
SAMPLES_PER_SECOND = 4000
SHOWN = 40


class Module:
    """A loaded file with its procedures: one of ours, or one of Wine's own, which have theirs in them."""

    def __init__(self, path, base):
        debug = path.with_name(path.name + '.debug')
        listed = output_of(PREFIX[is_32(path)] + 'nm', '-nC', debug if debug.exists() else path)
        headers = output_of(PREFIX[is_32(path)] + 'objdump', '-p', path)
        linked = int(re.search(r'ImageBase\s+([0-9a-f]+)', headers).group(1), 16)
        entries = re.findall(r'^([0-9a-f]+) [tT] (.+)$', listed, re.M)
        self.name, self.start = path.name, base or linked
        self.end = self.start + int(re.search(r'SizeOfImage\s+([0-9a-f]+)', headers).group(1), 16)
        self.addresses = [int(address, 16) + self.start - linked for address, _ in entries]
        self.names = [name for _, name in entries]

    def name_of(self, address):
        at = bisect.bisect_right(self.addresses, address) - 1
        return re.sub(r'(?<=\w)\(.*', '', self.names[at]) if at >= 0 else '?'


def output_of(*command):
    return subprocess.run(list(map(str, command)), capture_output=True, text=True, errors='replace').stdout


def is_32(path):
    return 'win32' in path.parts or 'i386-windows' in path.parts


def loaded_modules(trace, products):
    """The modules that the program loaded itself. Wine does not tell of ntdll, which lies where it was linked for."""
    wine = ROOT / 'build/wine/tree32/usr/lib/i386-linux-gnu/wine/i386-windows' if is_32(products) else Path('/usr/lib/x86_64-linux-gnu/wine/x86_64-windows')
    process = None
    bases = {'ntdll.dll': 0}
    for thread, path, base in re.findall(r'^(?:\w+:)?(\w+):trace:loaddll:build_module Loaded L"(.*?)" at ([0-9A-Fa-f]+)', trace, re.M):
        name = path.split('\\')[-1]
        process = thread if name.lower() == 'talvix_bench.exe' else process
        if process == thread:
            bases[name] = int(base, 16)
    files = {name: next((place for place in (products / name, wine / name, wine / name.lower()) if place.exists()), None) for name in bases}
    return [Module(file, bases[name]) for name, file in files.items() if file]


def place_of(sample, modules):
    """Module and procedure of a sample; of another program only its name."""
    program, address, symbol, file = sample
    if not program.startswith('talvix_bench'):
        return program, ''
    for module in modules:
        if module.start <= address < module.end:
            return module.name, module.name_of(address)
    return Path(file.strip('[]')).name, symbol


def profile(program, row, products, folder):
    """Samples one row; answers the text of its profile."""
    data = folder / 'profile.data'
    environment = dict(os.environ, TALVIX_PROFILE=row, WINEDEBUG='+loaddll')
    run = subprocess.run(['perf', 'record', '-q', '-k', 'CLOCK_MONOTONIC_RAW', '-e', 'cpu-clock', '-F', str(SAMPLES_PER_SECOND), '-o', str(data)] + program,
                         capture_output=True, text=True, errors='replace', env=environment)
    spans = sorted(tuple(map(float, span)) for span in re.findall(r'\[ SPAN     \] ([\d.]+) ([\d.]+)', run.stdout))
    if not spans:
        raise SystemExit('%s\nno such row: %s' % (run.stderr[-500:], row))
    loaded = loaded_modules(run.stderr, products)
    script = output_of('perf', 'script', '-i', data, '-F', 'comm,time,ip,sym,dso')
    starts = [start for start, _ in spans]
    modules, procedures = collections.Counter(), collections.Counter()
    for name, time, address, symbol, file in re.findall(r'^\s*(.*?)\s+([\d.]+):\s+([0-9a-f]+) (.*?) \((.*?)\)\s*$', script, re.M):
        at = bisect.bisect_right(starts, float(time)) - 1
        if at < 0 or float(time) > spans[at][1]:
            continue
        module, procedure = place_of((name, int(address, 16), symbol, file), loaded)
        modules[module] += 1
        procedures[module, procedure] += 1
    total = sum(modules.values())
    seconds = sum(end - start for start, end in spans)
    lines = ['%s: %d runs of %.3g ms, %d %% of it on a processor' % (
        row, len(spans), 1000 * seconds / len(spans), round(100 * total / SAMPLES_PER_SECOND / seconds)), '']
    lines += ['%5.1f %%  %s' % (100 * count / total, module) for module, count in modules.most_common(12)] + ['']
    lines += ['%5.1f %%  %-20s %s' % (100 * count / total, *which) for which, count in procedures.most_common(SHOWN)]
    return '\n'.join(lines) + '\n'
