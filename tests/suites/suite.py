"""What the suites written in Python have in common: each case is stated with result, the figures of a proof row with
state_row, and the suite ends with finish."""
import json
import os
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent.parent
RESULTS = Path(os.environ.get('TALVIX_RESULTS') or ROOT / 'build' / 'results' / 'by-hand' / Path(sys.argv[0]).name)
RESULTS.mkdir(parents=True, exist_ok=True)
SEED = int(os.environ.get('TALVIX_SEED', 1))
AMOUNT = os.environ.get('TALVIX_AMOUNT', '')
_cases = open(RESULTS / 'cases', 'w', encoding='utf-8')
_failed = 0


def result(what, good, detail=''):
    global _failed
    _failed += not good
    line = '%s\t%s' % ('ok' if good else 'failed', what)
    _cases.write(line + '\n')
    _cases.flush()
    print(line + (': %s' % detail if detail and not good else ''), flush=True)


def state_row(row, count, figures):
    (RESULTS / (row + '.row')).write_text(json.dumps({'row': row, 'count': count, 'figures': figures}), encoding='utf-8')


def amount(brief, short, long, seconds):
    """How often a row is tried, as TALVIX_AMOUNT says (see tests/proof/proof.h)."""
    forms = {'brief': brief, 'short': short, 'long': long, '': seconds}
    return forms[AMOUNT] if AMOUNT in forms else int(AMOUNT)


def finish():
    _cases.write('end\n')
    _cases.close()
    sys.exit(1 if _failed else 0)
