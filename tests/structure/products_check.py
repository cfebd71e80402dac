#!/usr/bin/env python3
"""Checks the finished products of a folder: what they import is frozen, where they lie is not, and they keep to their
sizes."""
import re
import subprocess
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent.parent / 'suites'))
from suite import finish, result  # noqa: E402 (its folder is named above)

SYSTEM = {'advapi32.dll', 'comctl32.dll', 'comdlg32.dll', 'oleacc.dll', 'gdi32.dll', 'kernel32.dll', 'mpr.dll', 'msvcrt.dll', 'ole32.dll',
          'oleaut32.dll', 'shell32.dll', 'user32.dll', 'uxtheme.dll'}
FROZEN = {
    'TalvixDMS.dll': SYSTEM - {'comctl32.dll', 'comdlg32.dll', 'oleacc.dll', 'uxtheme.dll'},
    'TalvixGrid.ocx': SYSTEM - {'comdlg32.dll', 'mpr.dll', 'shell32.dll'},
    'TalvixProject.dll': SYSTEM - {'comctl32.dll', 'oleacc.dll', 'mpr.dll', 'uxtheme.dll'},
    'TalvixWorkbench.com': SYSTEM - {'comctl32.dll', 'oleacc.dll', 'mpr.dll', 'uxtheme.dll'},
    'TalvixWorkbench.exe': SYSTEM - {'oleacc.dll', 'uxtheme.dll'},
}
EXPORTS = {'DllCanUnloadNow', 'DllGetClassObject', 'DllInstall', 'DllRegisterServer', 'DllUnregisterServer'}
# In KB, the type libraries with their help texts included. 32-bit programs carry their tables for exceptions in a longer form.
LARGEST = {'pei-x86-64': 620, 'pei-i386': 720}

folder = Path(sys.argv[1])
for name, expected in FROZEN.items():
    dump = subprocess.run(['objdump', '-p', str(folder / name)], capture_output=True, text=True, check=True).stdout
    imports = {line.lower() for line in re.findall(r'DLL Name: (\S+)', dump)}
    result(f'{name} imports system libraries only', imports == expected, sorted(imports ^ expected))
    wanted = {'DYNAMIC_BASE', 'NX_COMPAT'} | ({'HIGH_ENTROPY_VA'} if 'pei-x86-64' in dump else set())
    result(f'{name} lies at random places and runs no data', wanted <= set(dump.split()) and '.reloc' in dump,
           sorted(wanted - set(dump.split())))
    symbols = subprocess.run(['nm', str(folder / (name + '.debug'))], capture_output=True, text=True, check=True).stdout
    result(f'{name} guards its stack', '__stack_chk_fail' in symbols, 'no guard is called')
    if name.endswith(('.dll', '.ocx')):
        exports = set(re.findall(r'\[ *\d+\](?: \+base\[ *\d+\])? +(?:[0-9a-f]{4} +)?(Dll\w+)', dump))
        result(f'{name} exports its five entry points by plain name', exports == EXPORTS, sorted(exports))
        size = (folder / name).stat().st_size
        limit = LARGEST[re.search(r'file format (\S+)', dump).group(1)]
        result(f'{name} is at most {limit} KB', size <= limit * 1024, f'{size} bytes')
finish()
