"""The rules of documents once more, in another language: what `compare` holds against the component's own. Each function
takes a question's fields and answers its fields; None stands for what is not settled."""
import csv
import decimal
import email
import email.policy
import io
import re
import xml.etree.ElementTree

FORBIDDEN = '/\\*?|><:"'


def trimmed(text):
    return text.strip(' ')


def upper(text):
    """Letter by letter, so that no text becomes longer."""
    return ''.join(letter.upper() if len(letter.upper()) == 1 else letter for letter in text)


def without_last_units(text, count):
    """The text without its last UTF-16 units."""
    units = text.encode('utf-16-le', 'surrogatepass')
    return units[:max(0, len(units) - 2 * count)].decode('utf-16-le', 'surrogatepass')


def length_of(text):
    return len(text.encode('utf-16-le', 'surrogatepass')) // 2


def up_to_nul(text):
    return text.split('\0')[0]


# --- names and folders ---------------------------------------------------------------------------------------------------

def clean(text, replacement):
    for each in FORBIDDEN:
        text = text.replace(each, replacement)
    return [text]


def naming_rule(rule, number, name, company):
    missing = ''
    for mark, value, word in (('<Project Number>', number, 'Projektnummer'), ('<Project Name>', name, 'Projektname'),
                              ('<Company Name>', company, 'Firmenname')):
        if mark not in rule:
            continue
        if trimmed(value) == '':
            missing += ', ' + word
        else:
            rule = rule.replace(mark, trimmed(clean(value, '_')[0]))
    return [None if missing else rule, missing]


DEVICES = {'CON', 'PRN', 'AUX', 'NUL', 'CONIN$', 'CONOUT$', 'CLOCK$'} | {
    port + number for port in ('COM', 'LPT') for number in '123456789\u00b9\u00b2\u00b3'}


def is_plain(name):
    """Whether a file of this name lies directly in its folder and is no device; blanks around a device's name do not count."""
    if any(letter in FORBIDDEN or letter < ' ' for letter in name) or name.strip('. ') == '':
        return False
    return trimmed(name.split('.')[0]).upper() not in DEVICES


def plain(name):
    return ['1' if is_plain(name) else '0']


def file_name(path):
    return '' if trimmed(path) == '' else path.split('\\')[-1]


def folder_path(path):
    for at in reversed(range(len(path))):
        if path[at] == ':':
            return path[:at + 1]
        if path[at] == '\\':
            return path[:at]
    return ''


def extension_name(path):
    _, point, extension = path.split('\\')[-1].rpartition('.')
    return extension if point else ''


def joined(folder, name):
    if folder == '' or name == '':
        return folder + name
    return None if name[0] == '\\' else folder.rstrip('\\') + '\\' + name


def paths(first, second):
    return [file_name(first), folder_path(first), extension_name(first), joined(first, second)]


def place(name, *taken):
    if not is_plain(name):
        return []
    present = {upper(each) for each in taken}
    if upper(name) not in present:
        return ['P:\\Proj\\' + name, '0']
    _, point, extension = name.rpartition('.')
    if not point:
        extension = ''
    base = without_last_units(name, length_of(extension) + 1)
    for number in range(1, 100):
        candidate = '%s (%d).%s' % (base, number, extension)
        if upper(candidate) not in present:
            return ['P:\\Proj\\' + candidate, '1']
    return None


# --- network names -------------------------------------------------------------------------------------------------------

def share_path(data):
    at = data.find('Path')
    return '' if at < 0 else up_to_nul(data[at:]).partition('=')[2]


def unc(path, computer, remote, *shares):
    if path[:2] == 'X:' and remote != '':
        return [trimmed(up_to_nul(remote)) + path[2:]]
    if computer == '':
        return [path]
    folders = [(name, share_path(data)) for name, data in zip(shares[0::2], shares[1::2])]
    folders = [(name, folder) for name, folder in folders if folder != '']
    exact = [(name, '') for name, folder in folders if upper(folder) == upper(path)]
    begun = [(name, path[len(folder):]) for name, folder in folders if upper(path[:len(folder)]) == upper(folder)]
    for name, rest in exact + begun:
        tail = (name + '\\' + rest).replace('\\\\', '\\').replace('\\\\', '\\')
        return ['\\\\' + trimmed(up_to_nul(computer)).lower() + '\\' + tail]
    return [path]


# --- what is shown and chosen --------------------------------------------------------------------------------------------

def action(entry):
    at = entry.find(' (')
    return ['-1' if entry == 'Keiner' or at < 4 else entry[4:at]]


def dialog_filter(*fields):
    texts, suffixes, further = fields[:5], fields[5:10], fields[10]
    built = ''.join(text + '\0' + suffix + '\0' for text, suffix in zip(texts, suffixes) if text and suffix)
    if further:
        built += further.rstrip('\0') + '\0'
    return [(built or 'Alle Dateien\0*.*') + '\0\0']


def size(length):
    kilobytes = decimal.Decimal(length) / 1024
    if kilobytes <= 1:
        return ['1 KB']
    return ['{:,} KB'.format(int(kilobytes.quantize(1, decimal.ROUND_HALF_UP))).replace(',', '.')]


def version(text, platform, major, minor):
    before, point, _ = text.partition('.')
    before = trimmed(before) if point else ''
    if ' ' in before:
        return None
    number = re.match('[+-]?[0-9]+', before)
    is_old = number is None or int(number.group()) < 10
    return ['1' if is_old and (platform, major, minor) == ('2', '5', '0') else '0']


def grid(text, separator):
    """By the library's reader of such texts, which takes a line without any text for no field at all."""
    answer = []
    for line in csv.reader(io.StringIO(text, newline=''), delimiter=separator, strict=True):
        fields = line or ['']
        answer += [str(len(fields)), *fields]
    return answer


# --- mails ---------------------------------------------------------------------------------------------------------------

def addresses(message, field):
    """Names and addresses, by the library's reading of addresses."""
    return [(each.display_name, each.addr_spec) for header in message.get_all(field, []) for each in header.addresses]


def mime(units):
    """By the library's reader of mails: a whole text of each kind, every other part an attachment."""
    message = email.message_from_bytes(units.encode('latin-1'), policy=email.policy.default)
    sender = addresses(message, 'from') or [('', '')]
    receivers = addresses(message, 'to')
    body = {'text/plain': [], 'text/html': []}
    attachments = []
    for part in message.walk():
        if part.is_multipart():
            continue
        content = part.get_payload(decode=True)
        if part.get_content_type() in body and part.get_filename() is None:
            body[part.get_content_type()].append(content.decode(part.get_content_charset('us-ascii')))
        else:
            attachments += [part.get_filename(), content.decode('latin-1')]
    return [message['subject'], *sender[0], str(len(receivers)), *[field for each in receivers for field in each],
            ''.join(body['text/plain']), ''.join(body['text/html']), str(int(message['date'].datetime.timestamp())), *attachments]


# --- project files -------------------------------------------------------------------------------------------------------

def escaped(text):
    """As texts stand in a project file: what XML cannot carry, or would change, by its number."""
    def by_number(match):
        units = match.group().encode('utf-16-be', 'surrogatepass').hex()
        return ''.join('\\u' + units[at:at + 4] for at in range(0, len(units), 4))
    return re.sub('^ +| +\\Z|[\0-\x1f\x7f-\x9f\ud800-\udfff\ufffe\uffff]', by_number, text.replace('\\', '\\\\'))


def unescaped(text):
    """Refuses a backslash that begins neither of the two."""
    def meant(match):
        if match.group(1) is None:
            raise ValueError('a lone backslash in %r' % text)
        return '\\' if match.group(1) == '\\' else chr(int(match.group(1)[1:], 16))
    return re.sub(r'\\(\\|u[0-9a-fA-F]{4})?', meant, text)


def in_units(text):
    return text.encode('utf-16-be', 'surrogatepass')


def meant_by(text):
    """A text of a project file; bare blanks at its ends would be layout."""
    return unescaped(text.strip())


def project_in(text):
    """What a project file says: number, name, company, folder, then keys and texts of its documents."""
    root = xml.etree.ElementTree.fromstring(text)
    if root.tag != 'TalvixProject' or root.get('version') != '1':
        raise ValueError('another root')
    project = root.find('Project')
    answer = [meant_by(project.attrib[each]) for each in ('number', 'name', 'company', 'folder')]
    for document in root.find('Documents').findall('Document'):
        fields = {}
        for field in document.findall('Field'):
            if field.get('type') == 'text':
                fields[meant_by(field.get('name'))] = meant_by(field.text or '')
        for key in sorted(fields, key=in_units):
            answer += [key, fields[key]]
    return answer


def project(*fields):
    """What is read from the file must be what was asked to be written, keys in the order of their units."""
    keys = sorted(set(fields[4::2]), key=in_units)
    texts = dict(zip(fields[4::2], fields[5::2]))
    return [*fields[:4], *[each for key in keys for each in (key, texts[key])]]
