#!/usr/bin/env python3
"""Checks what the documents name: files, presets, suites and environment variables are there, and every variable that sources
and scripts read stands in the table of docs/contributing.md. Placeholders (NAME, <name>, …) and what lies in build/ are no claims."""
import json
import re
import subprocess
import sys
from fnmatch import fnmatchcase
from pathlib import Path, PurePosixPath

ROOT = Path(sys.argv[1])
GUIDE = 'docs/contributing.md'
# Set in CMakePresets.json or on CMake's command line, not in the environment.
CACHE_VARIABLES = {'TALVIX_ARCH', 'TALVIX_TESTS', 'TALVIX_BENCH', 'TALVIX_SANITIZE', 'TALVIX_COVERAGE', 'TALVIX_TIDY', 'TALVIX_FUZZ',
                   'TALVIX_PRESET', 'TALVIX_WIDL'}

# Headings of the columns that name suites ("to run one | of | how").
SUITE_COLUMNS = ('suite', 'of')

CODE = re.compile(r'`([^`\n]+)`')
BLOCK = re.compile(r'^(?: {4}|\t)(.*)$|^```.*\n((?:.*\n)*?)```', re.M)
LINK = re.compile(r'\]\(<?([^)\s>]+)>?(?: "[^"]*")?\)|\bsrc="([^"]+)"')
PATH = re.compile(r'[a-z.][\w.-]*(/[\w.*{},-]*)+')
SOURCE_NAME = re.compile(r'[\w*-]+\.(cpp|h|py|idl|def|cmake|rc|in|\*)')
PLACEHOLDER = re.compile(r'[<>…$%]|(?<![A-Za-z])[A-Z]{2,}(?![a-z])')
CAPITALS = ('README.md', 'CHANGELOG.md', 'CMakeLists.txt', 'CMakePresets.json')
PRESET = re.compile(r'\b(ctest|cmake --build|cmake)\b[^`\n&|]*? --preset[ =]([a-z][\w-]*)')
VARIABLE = re.compile(r'\bTALVIX_[A-Z0-9_]+\b')

# Where the guide tells variables: in tables, and in the paragraph on those that are not set by hand.
TOLD = re.compile(r'^\|.*|^The commands set\b.*(?:\n.+)*', re.M)


def line_at(text, place):
    return text.count('\n', 0, place) + 1


class House:
    """What is there to be named."""

    def __init__(self, files, read):
        self.files = set(files)
        self.places = self.files | {parent.as_posix() for name in files for parent in PurePosixPath(name).parents if parent.name}
        self.tops = {name.split('/')[0] for name in files if '/' in name}
        presets = json.loads(read('CMakePresets.json') or '{}')
        self.presets = {command: {preset['name'] for preset in presets.get(kind, []) if not preset.get('hidden')} for command, kind in
                        (('cmake', 'configurePresets'), ('cmake --build', 'buildPresets'), ('ctest', 'testPresets'))}
        cmake = '\n'.join(read(name) for name in files if name.endswith(('.cmake', 'CMakeLists.txt')))
        self.suites = set(re.findall(r'\btalvix_suite\(([a-z][\w-]*)', cmake))
        self.targets = set(re.findall(r'\b(?:add_executable|add_library|add_custom_target|talvix_(?!suite)\w+)\(\s*([A-Za-z][\w-]*)', cmake))
        self.mentioned, self.read_variables = set(), {}
        for name in files:
            if not name.endswith(('.md', 'docs_check.py')):
                text = read(name)
                self.mentioned |= set(VARIABLE.findall(text))
                for variable in variables_read(name, text):
                    self.read_variables.setdefault(variable, name)

    def has(self, path):
        """A path from the root, or the end of one, as tables name what lies in a folder of their row."""
        path = path.removeprefix('./').rstrip('/')
        patterns = [path] if '{' not in path else [re.sub(r'\{[^}]*\}', part, path) for part in re.search(r'\{([^}]*)\}', path).group(1).split(',')]
        return all(pattern in self.places or any(fnmatchcase(place, pattern) or fnmatchcase(place, '*/' + pattern) for place in self.places)
                   for pattern in patterns)


def variables_read(name, text):
    """The variables of the environment that a file reads: $NAME in scripts, "NAME" in programs."""
    if name.endswith(('.cmake', 'CMakeLists.txt', '.json')):
        return re.findall(r'\$ENV\{(TALVIX_\w+)\}', text)
    found = re.findall(r'''["'%](TALVIX_[A-Z0-9_]+)["'%]''', text)
    if text.startswith('#!/bin/') or name.endswith('.sh'):
        found += re.findall(r'\$\{?(TALVIX_[A-Z0-9_]+)', text)
    return [variable for variable in found if variable not in CACHE_VARIABLES]


def is_claim(word, house):
    """Whether a word of a command or of a list names a file of this project."""
    if word.startswith('build/') or PLACEHOLDER.search(word) and not word.endswith(CAPITALS):
        return False
    return bool(PATH.fullmatch(word)) and word.strip('./') != '' or bool(SOURCE_NAME.fullmatch(word))


def check_paths(document, text, house, problems):
    # In blocks of code other people's paths stand as well.
    named = [(found, found.group(1), True) for found in CODE.finditer(text)]
    named += [(found, found.group(1) or found.group(2), False) for found in BLOCK.finditer(text)]
    for found, content, is_ours in named:
        for word in re.split(r'[\s|\[\]"\'()=]+', content):
            word = word.rstrip(',;:') if word.endswith(('..', '/.')) else word.rstrip('.,;:')
            if is_claim(word, house) and (is_ours or word.split('/')[0] in house.tops | {'.'}) and not house.has(word):
                problems.append(f'{document}:{line_at(text, found.start())}: {word} is not there')


def slug(heading):
    return re.sub(r'[^\w\- ]', '', heading.strip().lower()).replace(' ', '-')


def check_links(document, text, house, read, problems):
    for found in LINK.finditer(text):
        target, _, anchor = (found.group(1) or found.group(2)).partition('#')
        if re.match(r'[a-z]+:', target):
            continue
        parts = []
        for part in [*PurePosixPath(document).parent.parts, *PurePosixPath(target).parts] if target else PurePosixPath(document).parts:
            parts = parts[:-1] if part == '..' else parts + [part]
        path = '/'.join(parts)
        if path not in house.places:
            problems.append(f'{document}:{line_at(text, found.start())}: the link {target} leads nowhere')
        elif anchor and anchor not in [slug(heading) for heading in re.findall(r'^#+ (.*)$', read(path), re.M)]:
            problems.append(f'{document}:{line_at(text, found.start())}: {path} has no heading #{anchor}')


def check_presets(document, text, house, problems):
    for found in PRESET.finditer(text):
        if found.group(2) not in house.presets[found.group(1)]:
            problems.append(f'{document}:{line_at(text, found.start())}: {found.group(1)} has no preset {found.group(2)}')
    for paragraph in re.finditer(r'\bPresets?: *\n?((?:.+\n)+)', text):
        for name in re.findall(r'`([a-z][a-z0-9-]*)`', paragraph.group(1)):
            if name not in set().union(*house.presets.values()):
                problems.append(f'{document}:{line_at(text, paragraph.start())}: no preset {name}')


def suites_named(text):
    """Names of suites: in the columns of tables that are headed so, behind ctest -R, behind tools/prove and its form."""
    column = None
    rows = [''] + text.splitlines()
    for number, (before, line) in enumerate(zip(rows, rows[1:]), 1):
        cells = [cell.strip() for cell in line.split('|')]
        if line.startswith('|') and not before.startswith('|'):
            column = next((at for at, cell in enumerate(cells) if cell in SUITE_COLUMNS), None)
        elif line.startswith('|') and column is not None:
            yield from ((number, name) for name in re.findall(r'`([a-z][a-z0-9-]*)`', cells[column]))
        yield from ((number, name) for name in re.findall(r'`ctest [^`]*-R \'?\^?([a-z][a-z0-9-]*)', line))
        yield from ((number, name) for name in re.findall(r'`tools/prove (?:brief |short |long )?([a-z][a-z0-9-]*)', line)
                    if name not in ('brief', 'short', 'long'))


def check_suites(document, text, house, problems):
    """Suites, and targets: by --target, and the programs of the tests by their names."""
    problems.extend(f'{document}:{line}: no suite {name}' for line, name in suites_named(text) if name not in house.suites)
    for found in re.finditer(r'--target[ =]([A-Za-z][\w-]*)|[`/ ](talvix_\w+)(?:\.exe)?[` ]', text):
        if (found.group(1) or found.group(2)) not in house.targets:
            problems.append(f'{document}:{line_at(text, found.start())}: no target {found.group(1) or found.group(2)}')


def check_variables(documents, house, problems):
    for document, text in documents.items():
        for found in VARIABLE.finditer(text):
            known = house.mentioned if found.group() in CACHE_VARIABLES else house.read_variables
            if found.group() not in known:
                problems.append(f'{document}:{line_at(text, found.start())}: nothing reads {found.group()}')
    told = set(VARIABLE.findall('\n'.join(TOLD.findall(documents.get(GUIDE, '')))))
    problems.extend(f'{GUIDE}: no row for {variable}, which {name} reads' for variable, name in sorted(house.read_variables.items())
                    if variable not in told)


def check(documents, house, read):
    problems = []
    for document, text in documents.items():
        check_paths(document, text, house, problems)
        check_links(document, text, house, read, problems)
        check_presets(document, text, house, problems)
        check_suites(document, text, house, problems)
    check_variables(documents, house, problems)
    return problems


def self_test():
    """The check must be able to fail: each of these lines has one fault, and the first document has none."""
    files = {'CMakePresets.json': '{"configurePresets": [{"name": "native"}], "testPresets": [{"name": "fast"}]}',
             'tests/CMakeLists.txt': 'talvix_suite(portable LABELS fast)\nadd_executable(talvix_tests x.cpp)',
             'tools/fuzz': '#!/bin/bash\necho ${TALVIX_SEED:-1}', 'core/grid.cpp': 'getenv("TALVIX_LIFE")', 'core/grid.h': '',
             'docs/images/a.png': '', 'README.md': '# One heading', GUIDE: ''}
    house = House(files, lambda name: files.get(name, ''))
    read = lambda name: files.get(name, '')
    good = ('`tools/fuzz [RUNS]` `core/grid.*` `grid.cpp` `core/` `./tools` `core/{grid.h,grid.cpp}` `build/x/y` `core/NAME.cpp` `a/<b>` '
            '`P:\\x` `/S`\n![x](images/a.png) [y](../README.md#one-heading) `cmake --preset native` `ctest --preset fast -R portable`\n'
            '`--target talvix_tests` `talvix_tests.exe` TALVIX_BENCH\n\n    ./tools/fuzz /path/to/x other/path\n\n| suite |\n|---|\n| `portable` |\n'
            '| TALVIX_SEED |\n\nThe commands set\nTALVIX_LIFE themselves.\n')
    house.mentioned.add('TALVIX_BENCH')
    assert not check({GUIDE: good}, house, read), check({GUIDE: good}, house, read)
    for bad in ('`tools/fuss`', '`core/gird.*`', '`gone.cpp`', '`tool/fuzz`', '`bash tools/gone 1`', '    ./gone x', '[y](gone.md)',
                '![x](images/b.png)', '[y](../README.md#two)', '`cmake --preset fast`', '`ctest --preset native`', 'Presets: `gone`\n',
                '| a | suite |\n|---|---|\n| `x` | `gone` |\n', '| to run one | of |\n| suite | `portable`, `gone` |\n', '`ctest --preset fast -R gone`', '`tools/prove brief gone`', '`--target gone`', '`build/native/tests/talvix_gone 1`', '`talvix_gone.exe`',
                '`TALVIX_GONE`', 'TALVIX_WIDL'):
        problems = check({GUIDE: good, 'docs/bad.md': bad}, house, read)
        if 'tools/prove' in bad:
            problems = [problem for problem in problems if 'suite' in problem]
        assert len(problems) == 1, (bad, problems)
    assert len(check({GUIDE: good.replace('TALVIX_LIFE', '')}, house, read)) == 1


def main():
    self_test()
    listed = subprocess.run(['git', '-C', str(ROOT), 'ls-files', '-co', '--exclude-standard'], capture_output=True, text=True, check=True)
    files = [name for name in listed.stdout.split('\n') if name and (ROOT / name).exists()]
    read = lambda name: (ROOT / name).read_text(encoding='utf-8', errors='replace') if (ROOT / name).is_file() else ''
    documents = {name: read(name) for name in files
                 if name in ('README.md', 'CHANGELOG.md') or fnmatchcase(name, 'docs/*.md') and name.count('/') == 1}
    house = House(files, read)
    problems = check(documents, house, read)
    print('\n'.join(problems) if problems else f'{len(documents)} documents name what is there')
    return 1 if problems else 0


sys.exit(main())
