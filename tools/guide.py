#!/usr/bin/env python3
"""guide.py PAGE.md PAGE.html: a page of the documentation as one HTML file that needs nothing beside it."""
import base64
import re
import sys
from pathlib import Path

import markdown

STYLE = """body{font:11pt/1.5 'Segoe UI',Arial,sans-serif;max-width:56em;margin:2em auto;padding:0 1em;color:#222}
h1,h2{color:#1c3f77;line-height:1.2}img{max-width:100%;border:1px solid #bbb}code,pre{font-family:Consolas,monospace;
background:#f2f2f2}pre{padding:.6em}table{border-collapse:collapse}td,th{border:1px solid #bbb;padding:.2em .6em;text-align:left}"""

source, target = Path(sys.argv[1]), Path(sys.argv[2])
text = source.read_text(encoding='utf-8')
body = markdown.markdown(text, extensions=['tables'])


def picture(match):
    data = (source.parent / match.group(1)).read_bytes()
    return 'src="data:image/png;base64,' + base64.b64encode(data).decode() + '"'


body = re.sub(r'src="([^":]+\.png)"', picture, body)
title = re.match(r'# (.*)', text).group(1)
target.write_text(f'<!DOCTYPE html>\n<html lang="de"><head><meta charset="utf-8"><title>{title}</title><style>{STYLE}</style>'
                  f'</head><body>\n{body}\n</body></html>\n', encoding='utf-8')
