#!/usr/bin/env python3
"""Checks that two calls to the outside never stand in one expression or one argument list: C++ leaves their order open, and
the host sees it. Each has a local of its own. Calls one inside the other, one behind the other (`a[u"X"].Call(u"Y")`) and
on both sides of && || ?: have an order of their own."""
import re
import subprocess
import sys
from pathlib import Path

FOLDERS = ('core', 'operations', 'folder', 'ui', 'common', 'component', 'server', 'workbench/host', 'workbench/program',
           'workbench/project', 'workbench/window', 'workbench/script', 'workbench/console')
# What calls out: late binding, the faces of the grid and of the host's libraries, and what reads through them.
OUTSIDE = re.compile(
    r'(?:\.|->)(?:Call|CallWith|Item|RowCount|RowAt|AddRow|CurrentRow|Selection|GroupCount|GroupIndent|ColumnCount|ColumnAt'
    r'|AddColumn|HitTest|Window|Find|IsGroup|Id|Key|Caption|IsHidden)\('
    r'|(?:\.|->)Get\((?=\s*(?:field::|u""))'
    r'|\b(?:InvokeByName|ReadGlobalSetting|UserProperty|GetProjectFolder|ObjectTypeOf|EntryText)\('
    r'|\[u""\]'
    r'|(?<![\w:])[a-z]\w*\(u"",|[\])]\(u""'
    r'|\bread\.(?:Text|Long|Truth|When)\(')
# A function's head; what its body asks the outside for, a call of it asks for too.
FUNCTION = re.compile(r'\b(?!if|for|while|switch|catch|next|If)(\w+)\((?:[^()]|\([^()]*\))*\)\s*(?:const\s*)?(?:noexcept\s*)?\{')
TYPE = re.compile(r'(?:inline )?(?:namespace|struct|class|union|extern)\b')
# Lines that look like it and are not, with their reason.
EXCEPTIONS = {
    'workbench/host/host.cpp': {'property(u"Projektname"': 'makes an object of our own, by a lambda of that name'},
}
COMMENT = re.compile(r'//[^\n]*|/\*.*?\*/', re.S)
STRING = re.compile(r'(?:u|L|u8)?R"\((?:.*?)\)"|(?:u|L|u8)?"(?:\\.|[^"\\])*"|(?:u|L)?\'(?:\\.|[^\'\\])+\'', re.S)
PAIRS = {'(': ')', '[': ']', '{': '}'}
# Operators whose two sides have an order, longest first; what lies between them is a part of its own.
ORDERED = ('&&', '||', '<<', '>>', '?', ':')
BINARY = ('==', '!=', '<=', '>=', '+', '-', '*', '/', '%', '<', '>', '&', '|', '^')


def plain(text):
    """The source with empty strings and no comments or directives; lines keep their numbers."""
    def blank(match):
        literal = match.group(0)
        return 'u""' + '\n' * literal.count('\n') if '"' in literal else "0"
    text = re.sub(r'^[ \t]*#(?:[^\n]*\\\n)*[^\n]*', '', text, flags=re.M)
    tokens = re.compile(COMMENT.pattern + '|' + STRING.pattern, re.S)
    return tokens.sub(lambda m: '\n' * m.group(0).count('\n') if m.group(0).startswith('/') else blank(m), text)


def closing(text, at):
    """The place of the bracket that closes the one at `at`."""
    depth = 0
    for place in range(at, len(text)):
        if text[place] in '([{':
            depth += 1
        elif text[place] in ')]}':
            depth -= 1
            if depth == 0:
                return place
    return len(text) - 1


def is_block(inner):
    """Statements, not a list of values."""
    depth = 0
    for character in inner:
        depth += character in '([{'
        depth -= character in ')]}'
        if character == ';' and depth == 0:
            return True
    return False


def without_blocks(text):
    """The text with the insides of lambdas taken out, and those insides."""
    out, blocks, at = [], [], 0
    while at < len(text):
        if text[at] == '{':
            end = closing(text, at)
            inner = text[at + 1:end]
            if is_block(inner):
                blocks.append((at + 1, inner))
                out.append('{' + re.sub(r'[^\n]', ' ', inner) + '}')
                at = end + 1
                continue
        out.append(text[at])
        at += 1
    return ''.join(out), blocks


def split(text, operators):
    """The parts between operators outside brackets, with their places."""
    parts, depth, start, at = [], 0, 0, 0
    while at < len(text):
        character = text[at]
        if character in '([{':
            depth += 1
        elif character in ')]}':
            depth -= 1
        elif depth == 0:
            if text.startswith(('->', '::', '++', '--'), at):
                at += 2
                continue
            found = next((each for each in operators if text.startswith(each, at)), None)
            if found:
                parts.append((start, text[start:at]))
                at += len(found)
                start = at
                continue
        at += 1
    parts.append((start, text[start:]))
    return parts


class Outside:
    """What counts as a call to the outside within one source: its own functions that make such calls do as well."""

    def __init__(self, text):
        bodies = [(match.group(1), text[match.end():closing(text, match.end() - 1)]) for match in FUNCTION.finditer(text)]
        self.own, self.search = set(), OUTSIDE.search
        while True:
            more = {name for name, body in bodies if self.search(body)} - self.own
            if not more:
                break
            self.own |= more
            names = re.compile(OUTSIDE.pattern + r'|(?<![.>:~\w])(?:' + '|'.join(sorted(self.own)) + r')\(')
            self.search = names.search


def calls_out(text):
    return outside.search(text) is not None


def expression(text, at, found):
    """Reports places of two calls without an order within an expression; `at` is its place in the source."""
    text, blocks = without_blocks(text)
    for place, inner in blocks:
        statements(inner, at + place, found)
    for place, part in split(text, ORDERED):
        operands = [(start, each) for start, each in split(part, ('=',) + BINARY) if calls_out(each)]
        sides = split(part, BINARY)
        if len([each for _, each in sides if calls_out(each)]) > 1 and len(operands) > 1:
            found.append(at + place + operands[1][0])
        brackets(part, at + place, found)


def brackets(text, at, found):
    place = 0
    while place < len(text):
        if text[place] in '([{':
            end = closing(text, place)
            inner = text[place + 1:end]
            listed = [(start, each) for start, each in split(inner, (',',)) if calls_out(each)]
            if len(listed) > 1 and not is_block(inner):
                found.append(at + place + 1 + listed[1][0])
            if is_block(inner):
                statements(inner, at + place + 1, found)
            else:
                for start, each in split(inner, (',',)):
                    expression(each, at + place + 1 + start, found)
            place = end
        place += 1


def statements(text, at, found):
    """Walks blocks and statements; what stands between ; { } outside brackets is an expression."""
    start, place = 0, 0
    while place < len(text):
        character = text[place]
        if character in '([':
            place = closing(text, place)
        elif character == '{':
            end = closing(text, place)
            inner = text[place + 1:end]
            head = text[start:place].strip()
            if is_block(inner) or TYPE.match(head) or head.endswith(')') or head.endswith(('const', 'else', 'do', 'override', 'noexcept')):
                expression(text[start:place], at + start, found)
                statements(inner, at + place + 1, found)
                start = end + 1
            place = end
        elif character == ';':
            expression(text[start:place], at + start, found)
            start = place + 1
        place += 1
    expression(text[start:], at + start, found)


def problems_in(source):
    global outside
    text = plain(source)
    outside = Outside(text)
    found = []
    statements(text, 0, found)
    return sorted({(text.count('\n', 0, place + len(text[place:]) - len(text[place:].lstrip())) + 1) for place in found})


def self_test():
    """The check must be able to fail, and to let pass."""
    bad = ['f(host.Call(u"A"), host.Call(u"B"));',
           'x = grid.GroupCount() * grid.GroupIndent() + 15;',
           'return grid.RowAt(1).Id() == row.Id();',
           'next([&] { a.Call(u"X", item.Item().Get(), b.Call(u"Y")); });',
           'return {Number(hit.Call(u"Row")), Number(hit.Call(u"Area")) == 3};',
           'ranges.push_back({range.Call(u"First"), range.Call(u"Last")});',
           'if (a) { for (;;) { y = row[u"A"] != row[u"B"]; } }',
           'return u"Nr. " + Text(row.Call(u"V", id)) + u" (" + Text(row.Call(u"V", at)) + u")";',
           'text = first(u"Item", 1) + second(u"Item", 2);',
           'T A(R r) { return r.Call(u"A"); }\nvoid f() { x = A(one) + A(two); }',
           'void f() {\n    g(read.Text(0),\n      read.Text(1));\n}']
    good = ['x = a[u"Y"](u"Z", u"w").Call(u"V");',
            'row.Set(key, library.Call(u"GetNextID", u"DMS"));',
            'return column.Key() == u"Icon" ? text : column.Caption();',
            'if (row.IsGroup() && !row.Id()) { x = row.Key(); }',
            'const auto a = x.Call(u"A"); const auto b = x.Call(u"B"); f(a, b);',
            'next([&] { a = x.Call(u"A"); }, [&] { b = x.Call(u"B"); });',
            'f(host.Call(u"A"), 1); // host.Call(u"B")',
            'for (int n = 1; n <= grid.RowCount(); ++n) { f(grid.RowAt(n)); }',
            'row.Get(u"A");\nrow.Get(u"B");']
    for each in bad:
        assert problems_in(each), each
    for each in good:
        assert not problems_in(each), each
    assert problems_in(bad[-1]) == [3]


def main():
    self_test()
    root = Path(sys.argv[1])
    names = subprocess.run(['git', '-C', str(root), 'ls-files', '-co', '--exclude-standard', '*.h', '*.cpp'],
                           capture_output=True, text=True, check=True).stdout.split()
    names = [name for name in names if name.startswith(tuple(folder + '/' for folder in FOLDERS)) and (root / name).exists()]
    problems = []
    for name in names:
        source = (root / name).read_text(encoding='utf-8')
        lines = source.splitlines()
        for number in problems_in(source):
            allowed = EXCEPTIONS.get(name, {})
            if not any(part in lines[number - 1] for part in allowed):
                problems.append(f'{name}:{number}: two calls to the outside without an order: {lines[number - 1].strip()}')
    print('\n'.join(problems) if problems else f'{len(names)} files name what they ask the outside for')
    return 1 if problems else 0


sys.exit(main())
