#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Plants one fault of each kind in a small tree and expects the checks beside this file to find it,
and to pass the same tree without it. A check that finds nothing any more would look like a clean one.
"""
import pathlib
import subprocess
import sys
import tempfile
import unittest

HERE = pathlib.Path(__file__).resolve().parent
LICENCE = "// SPDX-License-Identifier: GPL-3.0-or-later\n"
CLEAN = {
    "src/core/text.h": "#include <string>\n",
    "src/audio/reader.cpp": '#include "audio/reader.h"\n#include "core/text.h"\n',
    "src/audio/reader.h": "struct Reader { int Read(int n) const { return n; } };\n",
    "src/platform/shell_qt.cpp": '#include <QProcess>\n#include "core/text.h"\n',
    "src/ui/panes/window.cpp": '#include <QtWidgets/QWidget>\n#include "library/import.h"\n#include "ui_window.h"\n',
    "src/library/import.h": '#include "views/list.h"\n',
    "src/views/list.h": 'constexpr char kBrace[] = "{{{";\nint Rows();\n',
    "src/main.cpp": '#include <QApplication>\n#include "ui/panes/window.h"\n',
}


def long_function(lines):
    return "int Long(int n) {\n" + "  if (n) { ++n; }  // }\n" * (lines - 2) + "}\n"


class PlantedFaults(unittest.TestCase):
    def run_check(self, check, planted):
        with tempfile.TemporaryDirectory() as folder:
            root = pathlib.Path(folder)
            for name, text in {**CLEAN, **planted}.items():
                path = root / name
                path.parent.mkdir(parents=True, exist_ok=True)
                licence = LICENCE if path.suffix in (".cpp", ".h") and not text.startswith("/*") else ""
                path.write_text(licence + text, encoding="utf-8")
            command = (["cmake", f"-DROOT={root}", "-P", str(HERE / check)] if check.endswith(".cmake")
                       else [sys.executable, str(HERE / check), str(root)])
            done = subprocess.run(command, capture_output=True, text=True, check=False)
            return done.returncode, done.stdout + done.stderr

    def expect_found(self, check, name, text, *said):
        code, output = self.run_check(check, {name: text})
        self.assertNotEqual(code, 0, f"{check} let pass: {text[:60]!r}")
        for part in (name, *said):
            self.assertIn(part, output)

    def test_a_clean_tree_passes_every_check(self):
        for check in ("layers.cmake", "sizes.py", "licences.py"):
            code, output = self.run_check(check, {})
            self.assertEqual(code, 0, f"{check}: {output}")

    def test_an_include_upwards_or_sideways_is_found(self):
        for name, line in (
                ("src/core/bad.h", '#include "audio/reader.h"'),
                ("src/core/bad.cpp", '#include "files/descriptor.h"'),
                ("src/audio/bad.cpp", '#include "platform/shell.h"'),
                ("src/views/bad.cpp", '  #  include "library/import.h"'),
                ("src/playback/bad.cpp", '#include "library/import.h"'),
                ("src/library/bad.cpp", '#include "ui/panes/window.h"'),
                ("src/ui/kit/bad.cpp", '#include "ui/panes/window.h"'),
                ("src/library/bad.cpp", '#include "../ui/panes/window.h"'),
                ("src/attic/bad.cpp", '#include <vector>')):
            self.expect_found("layers.cmake", name, line + "\n")

    def test_the_toolkit_below_the_windows_is_found(self):
        for name, line in (("src/core/bad.h", "#include <QString>"),
                           ("src/views/bad.cpp", "#include <QtCore/QList>"),
                           ("src/repair.cpp", "#include <QFile>"),
                           ("src/library/bad.cpp", '#include "ui_frmImport.h"'),
                           ("src/platform/shell.h", "#include <QUrl>")):
            self.expect_found("layers.cmake", name, line + "\n", "Qt belongs")

    def test_a_long_file_and_a_long_function_are_found(self):
        self.expect_found("sizes.py", "src/core/bad.cpp", "int a;\n" * 600, "601 lines")
        self.expect_found("sizes.py", "src/core/bad.cpp", long_function(81), "81 lines", "int Long(int n)")
        nested = "namespace a {\nclass B : public C {\n public:\n  B() : c_{1} {}\n" + long_function(81) + "};\n}\n"
        self.expect_found("sizes.py", "src/core/bad.cpp", nested, "81 lines")
        allowed = "namespace a {\n" + long_function(80) + long_function(80) + "}\n"
        self.assertEqual(self.run_check("sizes.py", {"src/core/good.cpp": allowed})[0], 0)

    def test_a_missing_licence_is_found(self):
        for text in ("/* nothing */\n", "/*\n*/\n\n" + LICENCE):
            self.expect_found("licences.py", "src/core/bad.cpp", text, "SPDX")


if __name__ == "__main__":
    unittest.main()
