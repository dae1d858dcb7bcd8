#!/usr/bin/env python3
"""Proves from the sources that the windows and the imports change a map only by edits.

    map_writes.py --source TREE

In src/shell and src/entry it looks for

- writes to a field of the map's records (src/model/map.h and records.h), whatever the record's
  variable is called: assignments, calls that change a container, std::swap and the like, and
  references through which a container could be changed;
- calls of functions of the lower folders that receive a record of the map which they could change.

Each must be in one of the tables below, with its reason. Other code passes an `Edit` to
`EditHistory::Apply`.
"""

import argparse
import pathlib
import re
import sys

# The changes that edits of imports make. Only the second table calls them.
CHANGES = {"entry/entered_fixes.cpp", "entry/fix_import.cpp", "entry/gis_import.cpp",
           "entry/sheet_import.cpp", "entry/submap_import.cpp"}
EDITS = {"entry/import_edits.cpp"}

# Fields with the name of a map's field, of other records: file, and what is before the field.
OTHER_RECORDS = {
    ("entry/fix_draft.cpp", "layout_"): "the layout of the imported table",
    ("entry/fix_draft.cpp", "options"): "the options of an import",
    ("entry/fix_draft.cpp", "preview"): "a preview of an import",
    ("entry/fix_plan.cpp", "plan"): "the plan of an import",
    ("entry/fix_plan.cpp", "plan_"): "the plan of an import",
    ("entry/fix_table.cpp", "fix"): "a fix of the imported table",
    ("entry/fix_table.cpp", "heading"): "the heading of the imported table",
    ("entry/fix_table.cpp", "table"): "the imported table",
    ("entry/gis_file.cpp", "taker"): "texts of the imported file",
    ("entry/gis_lines.cpp", "taker"): "texts of the imported file",
    ("entry/gis_values.cpp", "fix"): "a fix of the imported file",
    ("entry/gpx.cpp", "taker_"): "texts of the imported file",
    ("entry/gpx.cpp", "file_.tracks.back()"): "a track of the imported file",
    ("entry/kml.cpp", "fix"): "a fix of the imported file",
    ("entry/kml.cpp", "taker_"): "texts of the imported file",
    ("entry/kml.cpp", "track_"): "a track of the imported file",
    ("entry/kml.cpp", "waypoint"): "a waypoint of the imported file",
    ("entry/preview.cpp", "all"): "a preview of an import",
    ("entry/preview.cpp", "leftOut"): "a preview of an import",
    ("entry/preview.cpp", "preview"): "a preview of an import",
    ("entry/preview.cpp", "row"): "a row of a preview",
    ("entry/preview.cpp", "shown"): "a row of a preview",
    ("entry/separated_table.cpp", "row"): "a row of the imported table",
    ("entry/sheet_draft.cpp", "all"): "a preview of an import",
    ("entry/sheet_draft.cpp", "page_"): "a page of a preview",
    ("entry/sheet_draft.cpp", "preview"): "a preview of an import",
    ("entry/sheet_draft.cpp", "spec"): "what the form says",
    ("entry/sheet_fields.cpp", "spec"): "what the form says",
    ("entry/xml_walk.cpp", "encoding"): "an encoding of the XML parser",
    ("entry/xml_walk.cpp", "search"): "the search for the outermost element",
    ("shell/entry/import_commands.cpp", "of"): "the sheet of a dialog",
    ("shell/entry/import_commands.cpp", "spec"): "what the dialog says",
    ("shell/files/qt_file_dialogs.cpp", "file"): "a FileSpecification",
    ("shell/files/picture_files.cpp", "file"): "a FileSpecification",
    ("shell/help/help_file.cpp", "file"): "a FileSpecification",
    ("shell/output/export_commands.cpp", "file"): "a FileSpecification",
    ("shell/map/info_rows_widget.cpp", "size_"): "an InfoPanelSize",
    ("shell/map/map_view.cpp", "shown_"): "the MapWindow",
    ("shell/panes/range_visibility_dialog.cpp", "values"): "what the dialog says",
    ("shell/panes/trail_visibility_dialog.cpp", "values"): "what the dialog says",
    ("shell/recovery/editor_drafts.cpp", "offer.copy.record"): "the record of a recovery copy",
    ("shell/picture_commands.cpp", "view"): "a MapWindow",
    ("shell/preferences_file.cpp", "settings.savedView"): "a SavedView",
    ("shell/reports/range_estimates_window.cpp", "input"): "what the figures of the window depend on",
    ("shell/reports/range_estimates_window.cpp", "picture"): "a ReportPicture",
    ("shell/reports/range_stats_window.cpp", "picture"): "a ReportPicture",
    ("shell/reports/survey_quality_window.cpp", "filter"): "a QualityFilter",
    ("shell/view_commands.cpp", "window.Shown()"): "the MapWindow",
}
# Writes to a map that no edit makes.
WRITES = {
    ("shell/open_maps.cpp", "map", "flags"): "marks a map that is being made as untitled",
}
# Functions that receive a map, or a record of one, and may be called without an edit.
CALLS = {
    "AskBeforeClosing": "saves, as the user says",
    "AskBeforeReloading": "asks",
    "ExportGeoJson": "writes a file of another kind",
    "ExportLayers": "writes files of another kind",
    "ExportShapefiles": "writes files of another kind",
    "MakeMissingContours": "draws contours, which no file holds",
    "MapWithContours": "looks at the bases",
    "MapsTiedTo": "looks at the bases",
    "RangeEditorOf": "makes an editor from its draft",
    "RangeOf": "looks a range up",
    "ReadSheetFields": "reads what the form says",
    "RecoveryText": "writes the map as a text",
    "RereadMap": "reads the map again, as a step of the history",
    "ResolveLocation": "looks a place up",
    "SaveChangedMaps": "saves",
    "SaveMapAs": "saves",
    "SkipTrack": "moves on in the imported file",
    "TrailEditorOf": "makes an editor from its draft",
}

SCANNED = ("entry", "shell")
FOLDERS_BELOW = ["model", "geometry", "trails", "places", "survey", "ranges", "elevation", "editing",
                 "mapfile", "entry", "view", "panes", "reports", "commands", "output"]
RECORDS = r"(?:Map|Trail|Point|Range|Grid|GridShade|Measurement|RangeIntersection|GisImport)"
NO_CODE = re.compile(r'//[^\n]*|/\*.*?\*/|"(?:\\.|[^"\\\n])*"|\'(?:\\.|[^\'\\\n])+\'', re.S)
CONTAINER_CALL = (r"\.(?:push_|emplace|pop_|erase|clear|insert|assign|swap|reset|splice|sort|remove|"
                  r"resize|append|merge|unique|reverse)\w*\(")


def code_of(path):
    """The source with comments and literals blanked, line by line as it was."""
    return NO_CODE.sub(lambda found: re.sub(r"[^\n]", " ", found.group(0)), path.read_text("utf-8"))


def fields_of(source):
    """The names of all fields of the map's records."""
    fields = set()
    for name in ("map.h", "records.h"):
        text = code_of(source / "src/model" / name)
        for body in re.findall(r"\bstruct \w+ (?:final )?\{(.*?)\n\};", text, re.S):
            for member in body.split(";"):
                declared = re.sub(r"\s*(?:=.*|\{.*)$", "", member.strip(), flags=re.S)
                found = re.search(r"[\w>*&]\s+[*&]?(\w+)(?:\s*\[\w*\])*$", declared)
                if found and "(" not in declared:
                    fields.add(found.group(1))
    return fields


def receivers_of(source):
    """The functions of the lower folders that could change a record which they receive."""
    functions = {}
    for folder in FOLDERS_BELOW:
        for header in sorted((source / "src" / folder).glob("*.h")):
            for found in re.finditer(r"^(\w[\w:<>,*& ]*?)\b([A-Z]\w+)\(([^;{]*)\)", code_of(header), re.M):
                makes_edit = found.group(1).strip() == "Edit"
                if not makes_edit and re.search(rf"(?:^|,)\s*{RECORDS}(?:&|\*)", found.group(3)):
                    functions[found.group(2)] = f"{folder}/{header.name}"
    return functions


class Search:
    def __init__(self, source):
        names = "|".join(sorted(fields_of(source)))
        field = rf"(?:\.|->)({names})\b(?!\()"
        before = r"((?:[\w\])]+(?:\(\))?(?:\.|->))*[\w\])]+(?:\(\))?)"
        self.writes = re.compile(rf"{before}{field}(?:\[[^\]]*\])*\s*(?:[-+|&^*/%]?=(?!=)|\+\+|--|"
                                 rf"{CONTAINER_CALL})")
        self.steps = re.compile(rf"(?:\+\+|--){before}{field}")
        self.passed = re.compile(rf"\bstd::(?:swap|exchange|move|sort|erase|erase_if|ranges::\w+)\("
                                 rf"[^;]*?{before}{field}")
        self.bound = re.compile(rf"(?<!const )\bauto[&*]+ \w+ = [*&]?{before}{field}\s*;")
        self.functions = receivers_of(source)
        self.calls = re.compile(rf"(?<![\w.>:])({'|'.join(sorted(self.functions))})\(")

    def faults(self, name, text):
        def line(at):
            return text.count("\n", 0, at) + 1

        for pattern in (self.writes, self.steps, self.passed, self.bound):
            for found in pattern.finditer(text):
                owner, field = found.group(1), found.group(2)
                if (name, owner) in OTHER_RECORDS or (name, owner, field) in WRITES:
                    continue
                yield f"src/{name}:{line(found.start())}: writes to {field} of {owner}"
        for found in self.calls.finditer(text):
            function = found.group(1)
            is_definition = text[text.rfind("\n", 0, found.start()) + 1:][:1] not in (" ", "")
            if function not in CALLS and not is_definition:
                yield (f"src/{name}:{line(found.start())}: calls {function} of "
                       f"{self.functions[function]}")


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--source", type=pathlib.Path, required=True)
    source = parser.parse_args().source
    search = Search(source)
    faults, seen = [], 0
    for folder in SCANNED:
        for path in sorted((source / "src" / folder).rglob("*.[ch]*")):
            name = str(path.relative_to(source / "src"))
            if name in CHANGES or name in EDITS:
                continue
            seen += 1
            faults += search.faults(name, code_of(path))
    for fault in faults:
        print(fault)
    if faults:
        print("A map is changed by an Edit. Code that changes none needs its row in", __file__)
    print(f"{seen} files, {len(faults)} faults")
    return 1 if faults or not seen else 0


if __name__ == "__main__":
    sys.exit(main())
