"""The demo fails for a script that lacks something or has something that nobody did; its sessions leave nothing out."""

import pathlib
import re
import sys
import unittest

sys.dont_write_bytecode = True
ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path[:0] = [str(ROOT / "tools"), str(ROOT / "tools" / "demo")]
import main
from mrdrive.host import Spot
from mrdrive.script import compare
from scenes import CONTROLS, SESSIONS, Scene, Session, Step

SESSION = Session("test", "A test", (Scene("The only one", (
    Step("opened", None, (r"TBB_New\(\)\.Checked = true;",),
         (("TBB_New", 'Main_host().MainMenu().GetItemByID("&New", host.IDM_NEW)'),)),
    Step("looked at", None),
)),))
EXPECTED = SESSION.scenes[0].steps[0].records

SCRIPT = """
  // Script begin
  Main_SampleCad().SetFocus();
  TBB_New().Checked = true;
  // Script end
function Main_SampleCad()
{
  return macro_player.
    MainWindow("host", "", "Frame");
}
function Main_host()
{
  return macro_player.
    MainWindow("host", "", "Frame");
}
function TBB_New()
{
  return Main_host().
    MainMenu().
      GetItemByID("&New", host.IDM_NEW);
}
"""


class Check(unittest.TestCase):
    def findings(self, old="", new=""):
        self.assertIn(old, SCRIPT)
        return main.check(SCRIPT.replace(old, new), SESSION, EXPECTED)

    def test_a_script_of_what_was_done_has_no_findings(self):
        self.assertEqual([], self.findings())

    def test_a_missing_statement_is_found(self):
        self.assertEqual([f"missing: {EXPECTED[0]}"], self.findings("  TBB_New().Checked = true;\n"))

    def test_a_statement_that_nobody_asked_for_is_found(self):
        self.assertEqual(["not asked for: Main_host().Close();"],
                         self.findings("  // Script end", "  Main_host().Close();\n  // Script end"))

    def test_a_function_that_is_missing_is_found(self):
        self.assertIn("not declared once: TBB_New", self.findings("function TBB_New", "function TBB_Open"))

    def test_another_way_to_an_item_is_found(self):
        self.assertEqual(['TBB_New is reached by Main_host().GetItemByID("&New", host.IDM_NEW) instead of '
                          'Main_host().MainMenu().GetItemByID("&New", host.IDM_NEW)'],
                         self.findings("    MainMenu().\n"))

    def test_an_item_that_is_told_by_a_number_is_found(self):
        self.assertIn('told by a number: GetItemByID("&New", 65698)', self.findings("host.IDM_NEW", "65698"))


class Hands:
    """Stands in for the stage, the host and the user; notes which controls are looked for."""

    def __init__(self):
        self.host = self.user = self
        self.names = set()

    def point(self, place, name, at=None):
        self.names.add(name)
        return 0, 0

    def wait_for(self, place, name="window"):
        self.names.add(name)
        return Spot(place, name, 0, (0, 0, 10, 10))

    def __getattr__(self, name):
        return lambda *arguments, **options: None


# Worked with by the keyboard, which goes where the focus is: the control, and what its step leaves in the script.
BY_KEYBOARD = {
    "IDC_PUSH": "Push().Click();",
    "IDC_PUSH_DEFAULT": "Default().Click();",
    "IDC_CHECK": "Hidden_lines().Checked = true;",
    "IDC_RADIO_COPPER": "Copper().Click();",
    "IDC_EDIT_NUMBER": 'Edit_galleryIDC_EDIT_NUMBER().Text = "250";',
    "IDC_SLIDER_VERTICAL": "TrackBar_galleryIDC_SLIDER_VERTICAL().Pos = 70;",
}

# What a user cannot change, what shows texts only, and more of a kind that is there already.
LEFT_OUT = re.compile(r".*_(DISABLED|HIDDEN|READ_ONLY|MIRROR|ALONE|RESULT|VALUE|PAGE)$|"
                      r"IDC_(BY_PROGRAM|APPEND|TREE_EXPAND|CHECK_3STATE_MANUAL|RADIO_STEEL|RADIO_ROUGH|EDIT_SPUN)$")


class Sessions(unittest.TestCase):
    def test_each_session_has_a_name_of_its_own(self):
        self.assertEqual(len(SESSIONS), len({session.name for session in SESSIONS}))

    def test_every_control_of_the_gallery_is_worked_with(self):
        hands = Hands()
        steps = [step for scene in CONTROLS.scenes for step in scene.steps]
        for step in steps:
            step.do(hands)
        touched = {re.split(r"[\[/]", name)[0] for name in hands.names}
        patterns = [pattern for step in steps for pattern in step.records]
        touched |= {name for name, statement in BY_KEYBOARD.items()
                    if any(not compare([statement], [pattern]) for pattern in patterns)}
        gallery = (ROOT / "apps" / "SampleCad" / "gallery.dev" / "gallery.h").read_text(encoding="ascii")
        controls = re.findall(r"^#define (IDC_\w+)", gallery, re.M)
        self.assertGreater(len(controls), 40)
        self.assertEqual([], [name for name in controls if name not in touched and not LEFT_OUT.match(name)])

    def test_a_session_takes_the_pictures_that_it_shows(self):
        for session in SESSIONS:
            taken = []
            hands = Hands()
            hands.screenshot = taken.append
            for scene in session.scenes:
                for step in scene.steps:
                    step.do(hands)
            self.assertEqual(sum(session.pictures_in_a_row), len(taken), session.name)


if __name__ == "__main__":
    unittest.main()
