"""What a measurement found, for programs: with --json FILE each of the measurements writes it there."""

import json


def addOption(parser):
    parser.add_argument("--json", metavar="FILE", help="also write the figures to this file")


def write(options, figures):
    if options.json:
        with open(options.json, "w", encoding="utf-8") as file:
            json.dump(figures, file, indent=2)
