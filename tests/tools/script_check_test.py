"""The demo's comparison of a script with what was done names every missing and every surplus statement."""

import pathlib
import sys
import unittest

sys.dont_write_bytecode = True
sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "tools"))
from mrdrive.script import Repeatable, chain, compare, functions, statements, undeclared, unnamed

SCRIPT = """<job>\r
function main()\r
{\r
  // Script begin\r
  Main_host().SetFocus();\r
  Main_host().Click(1, 10, 20, 0);\r
\r
  // Script end\r
}\r
function Main_host()\r
</job>"""


# Two items of one submenu: what both need is a function of its own.
WAYS = """function Main_host()\r
{\r
  return macro_player.\r
    MainWindow("host; 1", "", "Frame");\r
}\r
\r
function PT_File()\r
{\r
  return Main_host().\r
    MainMenu().\r
      GetItemByID("&File", host.IDM_POPUP_FILE).\r
        Expand();\r
}\r
\r
function TBB_New()\r
{\r
  return PT_File().\r
    GetItemByID("&New", host.IDM_FILE_NEW);\r
}\r
"""


class ScriptCheck(unittest.TestCase):
    def test_statements_are_what_stands_between_the_marks(self):
        self.assertEqual(["Main_host().SetFocus();", "Main_host().Click(1, 10, 20, 0);"], statements(SCRIPT))

    def test_a_script_that_recorded_nothing_has_no_statements(self):
        self.assertEqual([], statements("  // Script begin\r\n  // Script end\r\n"))

    def test_text_without_marks_is_no_script(self):
        with self.assertRaises(ValueError):
            statements("<job></job>")

    def test_statements_that_match_in_order_have_no_findings(self):
        self.assertEqual([], compare(["a(1);", "b();"], [r"a\(\d\);", r"b\(\);"]))

    def test_a_missing_statement_is_named(self):
        self.assertEqual(["missing: b"], compare(["a", "c"], ["a", "b", "c"]))

    def test_statements_in_another_order_are_missing_and_surplus(self):
        self.assertEqual(["not asked for: b", "missing: b"], compare(["b", "a"], ["a", "b"]))

    def test_a_statement_that_nobody_asked_for_is_named(self):
        self.assertEqual(["not asked for: x", "not asked for: y"], compare(["x", "a", "y"], ["a"]))

    def test_a_pattern_stands_for_a_whole_statement(self):
        self.assertEqual(["missing: a", "not asked for: ab"], compare(["ab"], ["a"]))

    def test_a_repeatable_statement_may_stand_there_several_times_in_a_row(self):
        self.assertEqual([], compare(["a(1);", "a(1);", "b"], [Repeatable(r"a\(\d\);"), "b"]))
        self.assertEqual(["not asked for: a(1);"], compare(["a(1);", "b", "a(1);"], [Repeatable(r"a\(\d\);"), "b"]))
        self.assertEqual(["not asked for: a(2);"], compare(["a(1);", "a(2);"], [Repeatable(r"a\(\d\);")]))
        self.assertEqual(["missing: a"], compare(["b"], [Repeatable("a"), "b"]))

    def test_a_window_function_that_is_called_must_be_declared_once(self):
        self.assertEqual([], undeclared(SCRIPT))
        self.assertEqual(["Main_host"], undeclared(SCRIPT.replace("function Main_host", "function Other")))
        self.assertEqual(["Main_host"], undeclared(SCRIPT + "\r\nfunction Main_host()\r\n"))

    def test_a_window_function_returns_its_calls_in_one_line(self):
        for script in (WAYS, WAYS.replace("\r", "")):
            self.assertEqual(
                {"Main_host": 'macro_player.MainWindow("host; 1", "", "Frame")',
                 "PT_File": 'Main_host().MainMenu().GetItemByID("&File", host.IDM_POPUP_FILE).Expand()',
                 "TBB_New": 'PT_File().GetItemByID("&New", host.IDM_FILE_NEW)'}, functions(script))

    def test_the_chain_of_a_window_begins_at_the_main_window(self):
        self.assertEqual('Main_host().MainMenu().GetItemByID("&File", host.IDM_POPUP_FILE).Expand().'
                         'GetItemByID("&New", host.IDM_FILE_NEW)', chain(WAYS, "TBB_New"))
        self.assertEqual('macro_player.MainWindow("host; 1", "", "Frame")', chain(WAYS, "Main_host"))

    def test_a_window_that_is_not_declared_has_no_chain(self):
        self.assertEqual("", chain(WAYS, "TBB_Open"))

    def test_an_item_that_is_told_by_a_number_is_named(self):
        self.assertEqual([], unnamed(WAYS))
        self.assertEqual(['GetItemByID("&File", 65698)'], unnamed(WAYS.replace("host.IDM_POPUP_FILE", "65698")))


if __name__ == "__main__":
    unittest.main()
