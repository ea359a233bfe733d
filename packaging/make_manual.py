#!/usr/bin/python3
"""Turns the manual's pages (*.ja.md) of a folder into HTML: make_manual.py SOURCE TARGET"""

import html
import re
import shutil
import sys
from pathlib import Path

import markdown

PAGE = """<!DOCTYPE html>
<html lang="ja">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<title>{title}</title>
<style>
body {{ max-width: 52em; margin: 2em auto; padding: 0 1em; line-height: 1.7;
       font-family: "Meiryo", "Yu Gothic UI", "IPAGothic", sans-serif; color: #222; }}
h1, h2, h3 {{ line-height: 1.3; }}
h2 {{ border-bottom: 1px solid #ccc; margin-top: 2em; }}
table {{ border-collapse: collapse; margin: 1em 0; }}
th, td {{ border: 1px solid #bbb; padding: .3em .6em; text-align: left; vertical-align: top; }}
th {{ background: #f0f0f0; }}
td:first-child {{ word-break: keep-all; }}
code, pre {{ font-family: "MS Gothic", "IPAGothic", monospace; background: #f4f4f4; }}
pre {{ padding: .6em; overflow-x: auto; }}
img {{ max-width: 100%; border: 1px solid #ccc; }}
@media print {{
  body {{ max-width: none; margin: 0; font-size: 10pt; }}
  h2, h3 {{ break-after: avoid; }}
  tr, img {{ break-inside: avoid; }}
}}
</style>
</head>
<body>
{body}
</body>
</html>
"""


def title_of(text):
    return re.search(r"^# (.+)$", text, re.MULTILINE)[1]


def heading_name(text, separator):
    """What links name a heading by: its words, whatever their script."""
    return re.sub(r"\s+", separator, re.sub(r"[^\w\s-]", "", text.lower()).strip())


def to_html(text):
    body = markdown.markdown(text, extensions=["tables", "fenced_code", "toc"],
                             extension_configs={"toc": {"slugify": heading_name}})
    # A heading that begins with an anchor of its own is named by it.
    body = re.sub(r'(<h\d) id="[^"]*"><a (id="[^"]+")></a>', r"\1 \2>", body)
    body = re.sub(r'(href="[^":]+)\.md([#"])', r"\1.html\2", body)
    return PAGE.format(title=html.escape(title_of(text)), body=body)


def missing_targets(pages, images):
    """Pictures, pages and headings that the pages name and that are not there."""
    there = {f"images/{image.name}" for image in images} | set(pages)
    for name, page in pages.items():
        there.update(f"{name}#{heading}" for heading in re.findall(r' id="([^"]+)"', page))
    for name, page in pages.items():
        for target in re.findall(r'(?:src|href)="([^":]+)"', page):
            if (name + target if target.startswith("#") else target) not in there:
                yield name, target


def main(source, target):
    source, target = Path(source), Path(target)
    images = list((source / "images").iterdir())
    pages = {file.stem + ".html": to_html(file.read_text(encoding="utf-8"))
             for file in sorted(source.glob("*.ja.md"))}
    missing = list(missing_targets(pages, images))
    for name, wanted in missing:
        print(f"{name}: there is no {wanted}", file=sys.stderr)
    if missing:
        return 1

    (target / "images").mkdir(parents=True)
    for image in images:
        shutil.copyfile(image, target / "images" / image.name)
    for name, page in pages.items():
        (target / name).write_text(page, encoding="utf-8", newline="\r\n")
    return 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
