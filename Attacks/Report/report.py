"""Takes the figures out of an attack's output, and writes the page from all figures. ./attack calls this."""

import argparse
import sys
from pathlib import Path

from page import page_text, print_figures
from results import fill, make_result, read_remarks, read_rows, write_result

PROJECT = Path(__file__).resolve().parents[2]


def collect(arguments):
    result = make_result(PROJECT, arguments.log, read_rows(arguments.attacks / "Rows.txt"), arguments.name,
                         arguments.seconds)
    write_result(arguments.result, result)
    print_figures(result["figures"])
    return 0 if all(figure["holds"] for figure in result["figures"]) else 1


def write_page(arguments):
    rows = read_rows(arguments.attacks / "Rows.txt")
    fill(rows, arguments.attacks / "Results")
    text = page_text(rows, read_remarks(arguments.attacks / "Remarks.md"))
    arguments.page.write_text(text, encoding="utf-8")
    return 0


def read_arguments():
    parser = argparse.ArgumentParser()
    parser.add_argument("--attacks", type=Path, default=PROJECT / "Attacks",
                        help="the folder with Rows.txt, Remarks.md and Results")
    commands = parser.add_subparsers(required=True)
    command = commands.add_parser("collect", help="take the figures out of a log")
    command.add_argument("log", type=Path)
    command.add_argument("result", type=Path)
    command.add_argument("--name", required=True)
    command.add_argument("--seconds", type=int, required=True)
    command.set_defaults(run=collect)
    command = commands.add_parser("page", help="write the page from the results")
    command.add_argument("page", type=Path, nargs="?", default=PROJECT / "Documentation" / "Reliability.md")
    command.set_defaults(run=write_page)
    return parser.parse_args()


def main():
    arguments = read_arguments()
    try:
        return arguments.run(arguments)
    except RuntimeError as error:
        print(error, file=sys.stderr)
        return 1


if __name__ == "__main__":
    sys.exit(main())
