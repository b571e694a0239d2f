#!/usr/bin/python3
"""Prints the manual: print_manual.py BUILD.css MANUAL.pdf

The pictures in the PDF get names that depend on their addresses, so the addresses are the same in
whatever folder the project is. With SOURCE_DATE_EPOCH set, every run gives the same bytes.
"""
import mimetypes
import pathlib
import sys

from weasyprint import CSS, HTML

BASE = "https://manual.invalid/"
HERE = pathlib.Path(__file__).resolve().parent


def fetch(address):
    name = address.removeprefix(BASE)
    return {"file_obj": open(HERE / name, "rb"), "mime_type": mimetypes.guess_type(name)[0]}


build_style, target = sys.argv[1:]
manual = HTML(string=(HERE / "manual.html").read_text(), base_url=BASE, url_fetcher=fetch)
manual.write_pdf(target, stylesheets=[CSS(filename=build_style)], identifier=b"Tarnwick-Manual")
