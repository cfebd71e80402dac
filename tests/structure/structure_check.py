#!/usr/bin/env python3
"""Checks the house: who may include whom, where Windows may be known, and how large things are."""
import re
import subprocess
import sys
from pathlib import Path

ROOT = Path(sys.argv[1])
HEADER_LINES, SOURCE_LINES, FUNCTION_LINES = 120, 400, 40

# A folder may include itself and the folders named here.
MAY_INCLUDE = {
    'automation': set(),
    'platform': {'automation'},
    'common': {'automation', 'platform'},
    'core': {'automation', 'platform', 'common', 'operations', 'folder', 'ui'},
    'operations': {'automation', 'platform', 'common', 'core', 'folder', 'ui'},
    'folder': {'automation', 'platform', 'common', 'core', 'operations', 'ui'},
    'ui': {'automation', 'platform', 'common', 'core', 'operations', 'folder'},
    'grid/model': {'automation'},
    'grid/control': {'automation', 'grid/model', 'platform', 'platform/win32'},
    'platform/win32': {'automation', 'platform'},
    'server': {'automation', 'platform', 'platform/win32', 'common', 'core', 'operations', 'folder', 'ui'},
    'workbench/host': {'automation', 'common', 'folder'},
    'workbench/console': {'automation', 'platform/win32', 'workbench/program'},
    'workbench/script': {'automation', 'workbench/host', 'workbench/program', 'platform', 'platform/win32'},
    'workbench/program': {'automation', 'workbench/host', 'folder', 'platform', 'platform/win32'},
}
PORTABLE = {'automation', 'platform', 'common', 'core', 'operations', 'folder', 'ui', 'grid/model', 'workbench/host'}
WINDOWS = re.compile(r'#include <(windows|unknwn|ole2|oaidl|oleauto|olectl|ocidl|objbase|shlobj|shellapi|commctrl)\.h>'
                     r'|\bwchar_t\b|\bL"|\bL\'|\bHWND\b|\bHRESULT\b')
COMMENT_FREE = re.compile(r'//.*')


def folder_of(path):
    name = path.as_posix()
    for folder in sorted(MAY_INCLUDE, key=len, reverse=True):
        if name.startswith(folder + '/'):
            return folder
    return None


def functions(lines):
    """Start and length of each function body: a brace block whose opening line ends a signature."""
    depth, start = 0, None
    outer = []  # True for braces of namespaces, types and tables
    for number, line in enumerate(lines, 1):
        code = COMMENT_FREE.sub('', line)
        code = re.sub(r'u?"(\\.|[^"\\])*"|u?\'(\\.|[^\'\\])\'', '""', code)
        for at, character in enumerate(code):
            if character == '{':
                head = code[:at].strip()
                is_outer = bool(re.match(r'(inline )?(namespace|struct|class|enum|union|extern|template|private:|public:)\b', head)) \
                    or head.endswith('=') or ((head == '' or 'for' not in head) and '(' not in head and ')' not in head
                                             and not head.endswith(('const', 'override', 'noexcept')))
                if all(outer) and not is_outer and start is None:
                    start = (number, len(outer))
                outer.append(is_outer)
            elif character == '}' and outer:
                outer.pop()
                if start is not None and len(outer) == start[1]:
                    yield start[0], number - start[0] + 1
                    start = None


def check(path, problems):
    lines = (ROOT / path).read_text(encoding='utf-8').splitlines()
    folder = folder_of(path)
    limit = HEADER_LINES if path.suffix == '.h' else SOURCE_LINES
    if folder and len(lines) > limit:
        problems.append(f'{path}: {len(lines)} lines, at most {limit}')
    if folder is None:
        return
    for number, line in enumerate(lines, 1):
        include = re.match(r'#include "([^"]+)"', line)
        if include:
            target = folder_of(Path(include.group(1)))
            if target is not None and target != folder and target not in MAY_INCLUDE[folder]:
                problems.append(f'{path}:{number}: {folder} may not include {target}')
        if folder in PORTABLE and WINDOWS.search(COMMENT_FREE.sub('', line)):
            problems.append(f'{path}:{number}: Windows outside its rooms')
    for start, length in functions(lines):
        if length > FUNCTION_LINES:
            problems.append(f'{path}:{start}: a function of {length} lines, at most {FUNCTION_LINES}')


def self_test():
    """The check must be able to fail."""
    body = ['void f() {'] + ['    x();'] * FUNCTION_LINES + ['}']
    assert [length for _, length in functions(body)] == [FUNCTION_LINES + 2]
    assert WINDOWS.search('#include <windows.h>') and WINDOWS.search('const wchar_t* x')
    assert folder_of(Path('platform/win32/com/x.h')) == 'platform/win32'
    assert 'platform/win32' not in MAY_INCLUDE['core']


def main():
    self_test()
    names = subprocess.run(['git', '-C', str(ROOT), 'ls-files', '-co', '--exclude-standard', '*.h', '*.cpp'],
                           capture_output=True, text=True, check=True).stdout.split()
    problems = []
    for name in names:
        if (ROOT / name).exists():
            check(Path(name), problems)
    print('\n'.join(problems) if problems else f'{len(names)} files keep to the house')
    return 1 if problems else 0


sys.exit(main())
