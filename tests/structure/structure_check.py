#!/usr/bin/env python3
"""Checks the house: who may include whom, where Windows may be known, how large things are, that every portable source has a
test, that no exception is swallowed and no handle closed by hand, and that suites wait for what happens instead of sleeping."""
import re
import subprocess
import sys
from pathlib import Path

ROOT = Path(sys.argv[1])
# Lines of a header, a source, a function. A test may be longer: it tells a story in order and its tables stand with it.
LIMITS = {'': (120, 400, 40), 'tests/': (120, 500, 60)}
# Longer than that: lines of the file, of a function, and why.
LONGER = {
    'tests/fakes/fake_dialogs.h': (165, 60, 'all dialogs of one port, each a few lines'),
    'tests/operations/enter_document_test.cpp': (520, 60, 'new and change, whose dialog is one'),
    'tests/contracts/files_contract.h': (200, 60, 'one case for each promise of the port'),
    'tests/fakes/fake_platform.h': (200, 60, 'one small fake per port, in the order of platform/platform.h'),
    'tests/com/holdings.h': (135, 60, 'the tables of the system that are counted stand with what counts them'),
    'bench/program.cpp': (400, 45, 'the list of parts that can be measured, three lines each'),
}

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
LITERALS = re.compile(r'//[^\n]*|/\*.*?\*/|(?:u8|u|L)?R"(\w*)\(.*?\)\1"|(?:u8|u|L)?"(?:\\.|[^"\\\n])*"'
                      r"|(?<!\w)(?:u|L)?'(?:\\.|[^'\\\n])+'", re.S)

# Portable folders and where their tests lie: NAME.cpp has NAME_test.cpp there, or stands in one of the two tables below.
TESTS_OF = {'automation': 'automation', 'common': 'common', 'core': 'core', 'folder': 'folder', 'operations': 'operations', 'ui': 'ui',
            'grid/model': 'grid', 'workbench/host': 'workbench', 'platform': 'platform'}
# Tests of several sources, each of a few procedures that are used together: a name of each header stands in the test.
TESTS_OF_SEVERAL = {
    'tests/automation/automation_test.cpp': 'automation: coercion culture dates event_source failure late late_object resume_next text value',
    'tests/common/common_test.cpp': 'common: general mod_message_handling mod_registry mod_registry_access settings',
    'tests/operations/file_outlook_item_test.cpp': 'core: document_record',  # made in all its forms
    'tests/core/grid_events_test.cpp': 'ui: context_menu',  # what the grid's events open
    'tests/folder/project_copy_test.cpp': 'folder: copy_to_project_folder file_name',
    'tests/folder/project_folder_test.cpp': 'core: attachment; folder: naming_rule project_folder_store sub_folders',
    'tests/operations/enter_document_test.cpp': 'operations: action_combo',  # one dialog
    'tests/grid/grid_hands_test.cpp': 'grid/model: column_set dropped_object events gestures layout rows_as_text saved_layout',
    'tests/grid/grid_reference_test.cpp': 'grid/model: group_tree row_model text_memory text_pool',
    'tests/workbench/document_files_test.cpp': 'workbench/host: folder_preview',  # told before documents are read in
    'tests/workbench/host_test.cpp': 'workbench/host: host_object import_report list_export summary',
    'tests/workbench/mime_test.cpp': 'workbench/host: mail_coding mail_header mail_item message_storage mime_reader',
}
# Sources behind another face, which alone is tested: the test, and the words in it for the case or the face.
TESTED_THROUGH = {
    'automation/member_index.cpp': ('tests/automation/automation_test.cpp', 'MemberTable'),  # which looks its members up in it
    'core/grid.cpp': ('tests/core/row_presentation_test.cpp', 'ReadsAndWritesTheCells'),  # every case of the component reads and writes by it
    'core/grid_setup.cpp': ('tests/core/main_test.cpp', 'InitSGDMS'),  # Main's member
    'core/listed_folders.cpp': ('tests/core/row_presentation_test.cpp', 'AreMissingIsListedOnce'),  # what a pass knows of folders
    'core/presentation_pass.cpp': ('tests/core/row_presentation_test.cpp', 'OncePerClassOfFileInOnePass'),
    'folder/folder_rules.cpp': ('tests/folder/project_folder_test.cpp', 'GetProjectFolder'),  # where the folder is not set by hand
    'grid/model/cell_store.cpp': ('tests/grid/grid_model_test.cpp', 'TextsOfEveryLengthComeAndGo'),  # cells are written by the grid's members
    'grid/model/column_members.cpp': ('tests/grid/grid_contract_test.cpp', 'GridColumns'),  # members, by name
    'grid/model/delimited_text.cpp': ('tests/grid/grid_contract_test.cpp', 'WhatIsMalformedIsRefused'),  # LoadRowsFromText
    'grid/model/find_index.cpp': ('tests/grid/grid_contract_test.cpp', 'IsRightForValuesThatStandInMostRows'),  # Find
    'grid/model/grid_members.cpp': ('tests/grid/grid_contract_test.cpp', 'GridRedraw'),  # members, by name
    'grid/model/group_members.cpp': ('tests/grid/grid_contract_test.cpp', 'GridGroups'),  # members, by name
    'grid/model/quick_filter.cpp': ('tests/grid/grid_filter_test.cpp', 'GridFilter'),  # the member "Filter"
    'grid/model/row_members.cpp': ('tests/grid/grid_contract_test.cpp', 'GridRows'),  # members, by name
    'grid/model/row_placement.cpp': ('tests/grid/grid_reference_test.cpp', 'AgreeWithAPlainList'),  # one of RowModel's sources
    'grid/model/row_selection.cpp': ('tests/grid/grid_contract_test.cpp', 'GridSelection'),  # one of RowModel's sources
    'grid/model/shown_text.cpp': ('tests/grid/grid_contract_test.cpp', 'TextIsTheUsersForm'),  # the member "Text"
    'grid/model/sort_keys.cpp': ('tests/grid/grid_contract_test.cpp', 'NumbersAndDatesInTextsCountByValue'),  # Sort
    'grid/model/value_index.cpp': ('tests/grid/grid_contract_test.cpp', 'IsRightAfterEveryKindOfChange'),  # Find
    'workbench/host/document_rows.cpp': ('tests/workbench/host_test.cpp', 'ReadRows'),  # declared with the host
}

# Catch blocks that neither throw, answer with a value nor record what failed: how many a file may have, and why.
SWALLOWING = {
    'automation/event_source.cpp': (2, 'the listener\'s trouble is not the sender\'s; nor is a list of them that no memory is left for'),
    'automation/resume_next.cpp': (1, 'writing the note of a skipped step must not fail the next one'),
    'core/listed_folders.cpp': (1, 'a folder that cannot be listed is asked file by file'),
    'grid/model/value_index.cpp': (1, 'without memory the search goes without an index'),
    'tests/fakes/fake_dialogs.cpp': (1, 'what fails inside a dialog shown is its own affair, as on Windows'),
    'tests/com/typed_client_test.cpp': (1, 'the failure of another thread is told by the one that waits'),
    'workbench/program/file_checks.cpp': (1, 'a folder that vanished while others are searched'),
    'workbench/program/open_project.cpp': (1, 'a destructor'),
    'workbench/program/remembered_layout.cpp': (1, 'a damaged layout leaves the columns as they are designed'),
    'tests/second/answers.cpp': (1, 'the refusal is the answer that is compared'),
}
RECORDS = re.compile(r'\bthrow\b|\breturn [^;]|\b(Skipped|ShowError|error|Require|Note|printf|EXPECT_\w+|ADD_FAILURE|FAIL)\(')
CATCH = re.compile(r'\bcatch \([^)]*\) \{')

# What ends a resource by hand stands in the types that own one. Windows (DestroyWindow) are not among them: they end with their
# parents and by their users.
CLOSING = re.compile(r'(?<![\w.:])(?:::)?(CloseHandle|GlobalFree|GlobalUnlock|LocalFree|HeapFree|CoTaskMemFree|SysFreeString|VariantClear|SafeArrayDestroy'
                     r'|ReleaseStgMedium|ReleaseDC|DeleteDC|EndPaint|DeleteObject|DestroyIcon|DestroyCursor|DestroyMenu|DestroyAcceleratorTable'
                     r'|ImageList_Destroy|RegCloseKey|FindClose|FindCloseChangeNotification|FreeLibrary|CloseClipboard|ReleaseActCtx|DeactivateActCtx'
                     r'|UnhookWindowsHookEx|WNetCloseEnum|ClosePrinter|UnmapViewOfFile|CoUninitialize|OleUninitialize) ?\('
                     r'|(?:->|\.)(Release)\(\)|(?<!= )\b(delete)\b(?!;)')
OWNERS = {
    'platform/win32/owned.h': 'CloseHandle DeleteDC DeleteObject DestroyAcceleratorTable DestroyIcon FindClose FreeLibrary GlobalFree RegCloseKey',
    'platform/win32/device_context.h': 'EndPaint ReleaseDC',  # ScreenDc, PaintDc
    'platform/win32/global_memory.h': 'CloseClipboard GlobalUnlock',  # LockedMemory, ClipboardScope
    'platform/win32/ole_scope.h': 'OleUninitialize',
    'platform/win32/com/bstr.h': 'SysFreeString',
    'platform/win32/com/variant.h': 'VariantClear',
    'platform/win32/com/com_ptr.h': 'Release',
    'platform/win32/com/unknown.h': 'delete',  # itself, with its last reference
    'grid/control/part.h': 'Release',  # of the whole object, which counts for its parts
    'platform/win32/com/dispatch_object.cpp': 'SysFreeString VariantClear',  # Exception and Parameters own what calls take in arrays
    'platform/win32/com/late_dispatch.cpp': 'delete',  # Spare: memory that waits for the next object
    'grid/model/cell_store.cpp': 'delete',  # values in cells of eight bytes, which a smart pointer does not fit into with its kind
    'platform/win32/drop_target.cpp': 'ReleaseStgMedium',  # Medium
    'platform/win32/popup_menu.cpp': 'DestroyMenu',  # CPopupMenu, unless a menu above it does
    'platform/win32/shell_browser.cpp': 'CoTaskMemFree HeapFree',  # deleters of what the shell hands out
    'platform/win32/visual_styles.cpp': 'DeactivateActCtx ReleaseActCtx',  # VisualStyles
    'workbench/program/print_list.cpp': 'DeleteDC GlobalFree',  # ChosenPrinter: what PrintDlg hands out together
    'workbench/program/program.cpp': 'LocalFree',  # the words of the command line, in the function that asks for them
}

# Scripts poll what they wait for, at most so long in between; a longer or computed pause says why on its line (# reason).
LONGEST_PAUSE = 0.2
SCRIPTS = ('tests/desktop/', 'tests/scripts/', 'tests/suites/', 'tools/')
PAUSING = {'tools/take-screenshots': 'no suite: pictures for the documents, in which nothing may be half drawn'}
SLEEP = re.compile(r'(?<![\w-])(?:time\.)?sleep[ (]+("[^"]*"|[^\s;)}&|]+)|WScript\.Sleep +(\S+)')


def folder_of(path):
    name = path.as_posix()
    for folder in sorted(MAY_INCLUDE, key=len, reverse=True):
        if name.startswith(folder + '/'):
            return folder
    return None


def code_of(text):
    """The text without comments and what stands in quotation marks; lines stay where they are."""
    return LITERALS.sub(lambda found: ('' if found.group().startswith('/') else '""') + '\n' * found.group().count('\n'), text)


def functions(code):
    """Start and length of each function body: a brace block whose opening line ends a signature."""
    start = None
    outer = []  # True for braces of namespaces, types and tables
    for number, line in enumerate(code.split('\n'), 1):
        for at, character in enumerate(line):
            if character == '{':
                head = line[:at].strip()
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


def line_at(code, place):
    return code.count('\n', 0, place) + 1


def swallowing(code):
    """Lines of catch blocks that let a failure vanish."""
    for found in CATCH.finditer(code):
        end, depth = found.end(), 1
        while depth and end < len(code):
            depth += {'{': 1, '}': -1}.get(code[end], 0)
            end += 1
        if not RECORDS.search(code[found.end():end]):
            yield line_at(code, found.start())


def closings(code):
    """Line and name of whatever ends a resource by hand."""
    for found in CLOSING.finditer(code):
        before = code[code.rfind('\n', 0, found.start()) + 1:found.start()]
        if not before.rstrip().endswith('operator'):
            yield line_at(code, found.start()), next(filter(None, found.groups()))


def declared(header):
    """The names that a header declares in its namespaces."""
    names, depth, head = set(), 0, ''
    for part in re.split(r'([{};])', re.sub(r'^\s*#.*$', '', code_of(header), flags=re.M)):
        is_namespace = part == '{' and re.search(r'\bnamespace\b[\w:\s]*$', head)
        if part in ('{', ';') and depth == 0 and not is_namespace:
            named = re.search(r'\b(?:class|struct|enum class|enum|using) (\w+)', head) or re.search(r'\b(\w+) ?\(', head)
            names.update(named.groups() if named else ())
        depth = max(0, depth + (part == '{' and not is_namespace) - (part == '}'))
        head = part if part not in ('{', '}', ';') else ''
    return names


def pauses(script):
    """Lines that sleep longer than a poll without saying why."""
    for number, line in enumerate(script.splitlines(), 1):
        code, _, reason = line.partition(' # ')
        for found in SLEEP.finditer('' if code.lstrip().startswith('#') else code):
            length = found.group(1) or found.group(2)
            seconds = float(length) / (1 if found.group(1) else 1000) if re.fullmatch(r'[\d.]+', length) else LONGEST_PAUSE + 1
            if seconds > LONGEST_PAUSE and not reason.strip():
                yield number, found.group()


def limits_of(name):
    area = next(area for area in sorted(LIMITS, reverse=True) if name.startswith(area))
    header, source, function = LIMITS[area]
    return LONGER.get(name, (header if name.endswith('.h') else source, function))[:2]


def check_sizes(name, lines, code, problems):
    most, longest = limits_of(name)
    if len(lines) > most:
        problems.append(f'{name}: {len(lines)} lines, at most {most}')
    for start, length in functions(code):
        if length > longest:
            problems.append(f'{name}:{start}: a function of {length} lines, at most {longest}')


def check_folders(path, lines, problems):
    folder = folder_of(path)
    if folder is None:
        return
    for number, line in enumerate(lines, 1):
        include = re.match(r'#include "([^"]+)"', line)
        target = folder_of(Path(include.group(1))) if include else None
        if target is not None and target != folder and target not in MAY_INCLUDE[folder]:
            problems.append(f'{path}:{number}: {folder} may not include {target}')
    if folder in PORTABLE:
        problems.extend(f'{path}:{number}: Windows outside its rooms' for number, line in enumerate(lines, 1)
                        if WINDOWS.search(re.sub(r'//.*', '', line)))


def check_resources(name, code, problems):
    lines, may = list(swallowing(code)), SWALLOWING.get(name, (0,))[0]
    if len(lines) > may:
        problems.extend(f'{name}:{line}: a catch that neither throws, answers nor records' for line in lines)
    elif len(lines) < may:
        problems.append(f'{name}: may swallow {may} failures and swallows {len(lines)}; correct the table')
    if folder_of(Path(name)) is None:
        return
    owned, found = OWNERS.get(name, '').split(), list(closings(code))
    problems.extend(f'{name}:{line}: {call} outside the owner types' for line, call in found if call not in owned)
    problems.extend(f'{name}: stands in the table of owners for {call} without need' for call in owned
                    if call not in (ended for _, ended in found))


def covered():
    """Source to (test, its own?) of the table of tests of several sources."""
    for test, sources in TESTS_OF_SEVERAL.items():
        for part in sources.split(';'):
            folder, _, nouns = part.strip().partition(': ')
            for noun in nouns.split():
                yield f'{folder}/{noun}.cpp', test


def check_tests(names, read, problems):
    """Every portable source has a test that knows it; the tables name nothing else."""
    tables = {**dict(covered()), **{source: test for source, (test, _) in TESTED_THROUGH.items()}}
    for source in sorted(set(tables) - set(names)):
        problems.append(f'{source}: in the table of tests, and not there')
    for source in (name for name in names if name.endswith('.cpp') and str(Path(name).parent) in TESTS_OF):
        own = f'tests/{TESTS_OF[str(Path(source).parent)]}/{Path(source).stem}_test.cpp'
        test = tables.get(source, own)
        if own in names and source in tables:
            problems.append(f'{source}: has a test of its own by now; take it out of the table')
        elif test not in names:
            problems.append(f'{source}: no test ({test})')
        elif source in TESTED_THROUGH:
            if not re.search(TESTED_THROUGH[source][1], read(test)):
                problems.append(f'{source}: {test} has no {TESTED_THROUGH[source][1]} any more')
        elif source in tables and not declared(read(source[:-3] + 'h')) & set(re.findall(r'\w+', code_of(read(test)))):
            problems.append(f'{source}: {test} uses nothing that its header declares')


def self_test():
    """The check must be able to fail."""
    longest = LIMITS[''][2]
    body = '\n'.join(['void f() {'] + ['    x(u"http://{");'] * longest + ['}'])
    assert [length for _, length in functions(code_of(body))] == [longest + 2]
    problems = []
    check_sizes('core/x.cpp', body.split('\n') * 10, code_of(body), problems)
    check_sizes('tests/core/x.cpp', body.split('\n'), code_of(body), problems)
    assert len(problems) == 2, problems
    assert WINDOWS.search('#include <windows.h>') and WINDOWS.search('const wchar_t* x')
    assert folder_of(Path('platform/win32/com/x.h')) == 'platform/win32'
    assert 'platform/win32' not in MAY_INCLUDE['core']
    assert list(swallowing('try {\n} catch (...) {\n    if (x) {\n    }\n}')) == [2]
    assert list(swallowing('} catch (...) {\n    return;\n}')) == [1]
    assert not list(swallowing('} catch (...) {\n    return {};\n} catch (...) {\n    throw;\n} catch (const A& a) {\n    return 1;\n}'))
    assert [call for _, call in closings('CloseHandle(a);\nb->Release();\ndelete c;\nX(const X&) = delete;')] == [
        'CloseHandle', 'Release', 'delete']
    assert not list(closings('void operator delete(void*);\nkey.Release(1); NotCloseHandle(a);'))
    assert declared('namespace a {\nclass B { void C(); };\nint D(int e);\n}') == {'B', 'D'}
    assert [line for line, _ in pauses('sleep 5\nsleep 0.1\nsleep 1 # the clock has seconds\nsleep $x\ntime.sleep(5)')] == [1, 4, 5]
    check_resources('core/x.cpp', 'CloseHandle(a); } catch (...) { }', problems)
    assert len(problems) == 4, problems
    noun = 'automation/new_noun.cpp'
    check_tests([noun], lambda name: '', problems)
    assert f'{noun}: no test (tests/automation/new_noun_test.cpp)' in problems
    texts = {'automation/text.h': 'int Trim(int);', 'tests/automation/automation_test.cpp': 'TEST(Text, Other) {}'}
    check_tests(['automation/text.cpp', *texts], lambda name: texts[name], problems)
    assert any('uses nothing' in problem for problem in problems)


def tracked(*patterns):
    found = subprocess.run(['git', '-C', str(ROOT), 'ls-files', '-co', '--exclude-standard', *patterns],
                           capture_output=True, text=True, check=True).stdout.split('\n')
    return [name for name in found if name and (ROOT / name).is_file()]


def main():
    self_test()
    names = tracked('*.h', '*.cpp')
    read = lambda name: (ROOT / name).read_text(encoding='utf-8') if (ROOT / name).exists() else ''
    problems = []
    for name in names:
        text = read(name)
        lines, code = text.splitlines(), code_of(text)
        check_sizes(name, lines, code, problems)
        check_folders(Path(name), lines, problems)
        check_resources(name, code, problems)
    check_tests(names, read, problems)
    for name in tracked(*(folder + '*' for folder in SCRIPTS)):
        if not name.endswith(('.h', '.cpp', '.txt')) and name not in PAUSING:
            problems.extend(f'{name}:{line}: "{pause}" waits without a reason; poll, or say why behind a #' for line, pause in pauses(read(name)))
    print('\n'.join(problems) if problems else f'{len(names)} files keep to the house')
    return 1 if problems else 0


sys.exit(main())
