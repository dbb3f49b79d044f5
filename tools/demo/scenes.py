"""What the demo does in SampleCad, and what the recorder must make of it.

A scene is a list of steps; a step is something that a user does and the statements that it must leave in the script,
as patterns, in order. A step with statements is over when the recorder has reported the last of them; a step whose
effect matters to the next one waits for the host to show it.

Accelerators come before menus: once a command has been chosen in a menu, the recorder takes every accelerator of
the same window for that command and records none of them.
"""

import dataclasses
import re
import typing

from mrdrive.script import Repeatable
from mrdrive.user import LEFT, RIGHT


@dataclasses.dataclass(frozen=True)
class Step:
    what: str             # as shown to the reader
    do: typing.Callable   # takes the Stage
    records: tuple = ()   # patterns of the statements that it leaves in the script


@dataclasses.dataclass(frozen=True)
class Scene:
    title: str
    steps: tuple


@dataclasses.dataclass(frozen=True)
class Session:
    """One recording: a fresh SampleCad, scenes, one script."""

    name: str            # of the script and the picture
    title: str
    scenes: tuple
    ends_by_itself: bool  # the last step ends the host; else Ctrl+Break ends the recording


# ---- gestures -----------------------------------------------------------------------------------
# Each makes a function of the stage. A control is named by the place and the id that SampleCad gives it.

VIEW = ("document:1", "IDC_VIEW")


def click(place, name, at=None, button=LEFT, holding=None):
    """A click in the middle of a control, or at a point counted from its top left corner."""
    return lambda stage: stage.user.click(stage.point(place, name, at), button, holding)


def double_click(place, name, at=None):
    return lambda stage: stage.user.double_click(stage.point(place, name, at))


def drag(place, name, start, end):
    return lambda stage: stage.user.drag(stage.point(place, name, start), stage.point(place, name, end))


def drag_by(place, name, distance):
    """Drags a part of a control, such as a thumb, to the right."""
    def do(stage):
        x, y = stage.point(place, name)
        stage.user.drag((x, y), (x + distance, y))
    return do


def drop_down(place, name, command):
    """The arrow at the right edge of a toolbar button, then a command of the menu under it."""
    def do(stage):
        spot = stage.host.wait_for(place, name)
        stage.user.click((spot.rect[2] - 6, spot.centre[1]))
        stage.user.click(stage.point("menu", command))
        stage.host.wait_until_gone("menu", command)
    return do


def type_into_cell(place, name, value):
    """Opens a cell for editing with a double click and replaces its text."""
    def do(stage):
        stage.user.double_click(stage.point(place, name))
        stage.user.key("Home", "shift+End")
        stage.user.type(value)
        stage.user.key("Return")
    return do


def keys(*chords):
    return lambda stage: stage.user.key(*chords)


def retype(place, name, text):
    """Clicks into an edit box, selects what is there and types over it."""
    def do(stage):
        stage.user.click(stage.point(place, name))
        stage.user.key("Home", "shift+End")
        stage.user.type(text)
    return do


def pick_by_keys(place, name, *chords):
    """Opens a list with the mouse and chooses in it with the keyboard."""
    def do(stage):
        stage.user.click(stage.point(place, name))
        stage.user.key(*chords)
    return do


def choose(*path):
    """A command of the menu bar, by mouse: the names of the menus, then the command."""
    def do(stage):
        stage.user.click(stage.point("menubar", path[0]))
        for name in path[1:]:
            stage.user.click(stage.point("menu", name))
        stage.host.wait_until_gone("menu", path[-1])
    return do


def choose_in_context(place, name, at, command):
    def do(stage):
        stage.user.click(stage.point(place, name, at), RIGHT)
        stage.user.click(stage.point("menu", command))
        stage.host.wait_until_gone("menu", command)
    return do


def showing(gesture, place, name="window"):
    """A gesture after which a window or a control is there."""
    def do(stage):
        gesture(stage)
        stage.host.wait_for(place, name)
    return do


def closing(gesture, place):
    """A gesture after which a window is gone."""
    def do(stage):
        gesture(stage)
        stage.host.wait_until_gone(place)
    return do


def photographed(gesture):
    """Takes the session's picture before the gesture."""
    def do(stage):
        stage.screenshot()
        gesture(stage)
    return do


# ---- patterns -----------------------------------------------------------------------------------

NUMBER = r"-?\d+"
SIZE = rf"{NUMBER}, {NUMBER}"  # of the view, with every mouse statement


def text(statement):
    """A statement that is known letter by letter."""
    return re.escape(statement)


def pressed(name):
    """A click on a button.

    The recorder takes the parent's notification for the click that it has recorded already when it comes within
    100 ms. On a machine that is busy with other things it comes later, and the click is recorded once more.
    Buttons of the same text in several dialogs are told apart by a number, which the script has and the report lacks.
    """
    return Repeatable(rf"{name}(_\d+)?\(\)\.Click\(\);")


def command(name):
    return text(f"Main_SampleCad().Command({name});")


def in_view(statement, *before, after=()):
    """A mouse statement of the view: the numbers before and after the view's size."""
    numbers = [*map(str, before), SIZE, *map(str, after)]
    return rf"CADView\(\)\.{statement}\({', '.join(numbers)}\);"


CAMERA = rf'CADView\(\)\.SetCameraPosition\("[^"]+", {SIZE}\);'


# ---- scenes -------------------------------------------------------------------------------------

IN_THE_VIEW = Scene("In the view, with the mouse", (
    Step("click", click(*VIEW, at=(100, 200)),
         (CAMERA, in_view("Click", 1, 100, 200, after=[0]))),
    Step("click with Ctrl held down", click(*VIEW, at=(140, 220), holding="ctrl"),
         (in_view("Click", 1, 140, 220, after=[8]),)),
    Step("double click", double_click(*VIEW, at=(180, 240)), (in_view("DoubleClick", 1, 180, 240, after=[0]),)),
    Step("drag, which turns the model", drag(*VIEW, (300, 300), (380, 330)), (CAMERA,)),
))

BY_KEYBOARD = Scene("Accelerators", (
    Step("Ctrl+4, seen from a corner", keys("ctrl+4"), (command("samplecad.IDM_VIEW_ISOMETRIC"),)),
    Step("F7, nearer", keys("F7"), (command("samplecad.IDM_VIEW_ZOOM_IN"),)),
))

SHAPE = "dialog:shape"
SHAPE_DIALOG = Scene("A dialog", (
    Step("Ctrl+D opens it", showing(keys("ctrl+d"), SHAPE), (command("samplecad.IDM_DRAW_SHAPE"),)),
    Step("a name is typed", retype(SHAPE, "IDC_SHAPE_NAME", "Wheel \"12\""),
         (text(r'Edit_samplecadIDC_SHAPE_NAME().Text = "Wheel \"12\"";'),)),
    Step("a kind is chosen", pick_by_keys(SHAPE, "IDC_SHAPE_KIND", "Down", "Return"),
         (text('ComboBox_samplecadIDC_SHAPE_KIND().SelectItemByName("Cone");'),)),
    Step("the radius grows", click(SHAPE, "IDC_RADIUS_SPIN[up]"), (text('Edit_samplecadIDC_RADIUS().Text = "26";'),)),
    Step("another colour", click(SHAPE, "IDC_COLOR_RED"), (pressed("Red"),)),
    Step("not visible", click(SHAPE, "IDC_SHAPE_VISIBLE"), (text("Visible().Checked = false;"),)),
    Step("OK", photographed(closing(click(SHAPE, "IDOK"), SHAPE)), (pressed("OK"),)),
))

PROPERTIES, GENERAL, NOTES = "dialog:properties", "dialog:properties:general", "dialog:properties:notes"
CHILD_DIALOGS = Scene("A dialog with untitled dialogs in it", (
    Step("Alt+Enter opens it", showing(keys("alt+Return"), GENERAL), (command("samplecad.IDM_FILE_PROPERTIES"),)),
    Step("the author", retype(GENERAL, "IDC_AUTHOR", "Ada"), (text('Edit_samplecadIDC_AUTHOR().Text = "Ada";'),)),
    Step("inches", click(GENERAL, "IDC_UNITS_INCH"), (pressed("Inches"),)),
    Step("no more notes", click(NOTES, "IDC_CLEAR_NOTES"), (pressed("Clear_notes"),)),
    Step("OK", closing(click(PROPERTIES, "IDOK"), PROPERTIES), (pressed("OK"),)),
))

FIND = "dialog:find"
MODELESS = Scene("A dialog beside the work", (
    Step("Ctrl+F opens it", showing(keys("ctrl+f"), FIND), (command("samplecad.IDM_EDIT_FIND"),)),
    Step("a word", retype(FIND, "IDC_FIND_TEXT", "wheel"), (text('Edit_samplecadIDC_FIND_TEXT().Text = "wheel";'),)),
    Step("find it", click(FIND, "IDC_FIND_NEXT"), (pressed("Find_next"),)),
    Step("close", closing(click(FIND, "IDCANCEL"), FIND), (pressed("Close"),)),
))

MENUS = Scene("Menus", (
    Step("a command two levels deep", choose("View", "Zoom", "IDM_VIEW_ZOOM_FIT"),
         (text("TBB_Fit_F9().Checked = true;"),)),
    Step("a check mark", choose("View", "IDM_VIEW_GRID"), (text("TBB_Grid_CtrlG().Checked = false;"),)),
    Step("the view's context menu", choose_in_context(*VIEW, (500, 300), "IDM_VIEW_AXES"),
         (CAMERA, in_view("ContextMenu", 500, 300), text("TBB_Axes().Checked = false;"))),
))


def gallery(kind, title, *steps):
    """A dialog of the control gallery, opened from the menu and closed with its button."""
    place = f"dialog:{kind}"
    identifier = "TBB_" + title.replace(" ", "_")
    return Scene(title, (
        Step("from the menu", showing(choose("Tools", "Controls", f"IDM_GALLERY_{kind.upper()}"), place),
             (text(f"{identifier}().Checked = true;"),)),
        *steps,
        Step("close", closing(click(place, "IDCANCEL"), place), (pressed("Close"),)),
    ))


BUTTONS = gallery(
    "buttons", "Buttons",
    Step("a push button", click("dialog:buttons", "IDC_PUSH"), (pressed("Push"),)),
    Step("one to which the host gives a name", click("dialog:buttons", "IDC_PUSH_NAMED"), (pressed("NamedButton"),)),
    Step("a check box", click("dialog:buttons", "IDC_CHECK"), (text("Hidden_lines().Checked = true;"),)),
    Step("three states", click("dialog:buttons", "IDC_CHECK_3STATE"),
         (text("Three_states().CheckedState = tsCHECKED;"),)),
    Step("a radio button", click("dialog:buttons", "IDC_RADIO_BRASS"), (pressed("Brass"),)),
)

EDITS = gallery(
    "edits", "Edits",
    Step("typed", retype("dialog:edits", "IDC_EDIT", "M8 x 40"), (text('Edit_galleryIDC_EDIT().Text = "M8 x 40";'),)),
    Step("one to which the host gives a name", retype("dialog:edits", "IDC_EDIT_NAMED", "Ada"),
         (text('NamedEdit().Text = "Ada";'),)),
    Step("several lines", lambda stage: (stage.user.click(stage.point("dialog:edits", "IDC_EDIT_MULTILINE")),
                                         stage.user.key("ctrl+Home"), stage.user.type("first"),
                                         stage.user.key("Return")),
         (text(r'Edit_galleryIDC_EDIT_MULTILINE().Text = "first\r\n";'),)),
    Step("the arrow beside it", click("dialog:edits", "IDC_SPIN[up]"),
         (r'Edit_galleryIDC_EDIT_SPUN\(\)\.Text = "\d+";',)),
)

COMBOS = gallery(
    "combos", "Combo boxes",
    Step("chosen", pick_by_keys("dialog:combos", "IDC_COMBO_LIST", "Down", "Return"),
         (text('ComboBox_galleryIDC_COMBO_LIST().SelectItemByName("Brass");'),)),
    Step("typed", retype("dialog:combos", "IDC_COMBO_EDIT/Edit", "Tin"), (r'Edit_\w+\(\)\.Text = "Tin";',)),
    Step("its list always open", click("dialog:combos", "IDC_COMBO_SIMPLE/ComboLBox[3]"),
         (text('ComboBox_galleryIDC_COMBO_SIMPLE().SelectItemByName("Aluminium");'),)),
)

LISTS = gallery(
    "lists", "Lists",
    Step("one", click("dialog:lists", "IDC_LIST_SINGLE[3]"),
         (text('ListBox_galleryIDC_LIST_SINGLE().SelectItemByName("Aluminium");'),)),
    Step("several", lambda stage: (click("dialog:lists", "IDC_LIST_MULTIPLE[1]")(stage),
                                   click("dialog:lists", "IDC_LIST_MULTIPLE[4]")(stage)),
         (text('ListBox_galleryIDC_LIST_MULTIPLE().SelectItemByName("Brass");'),
          text('ListBox_galleryIDC_LIST_MULTIPLE().SelectItemByName("Cast iron");'))),
    Step("in a table", click("dialog:lists", "IDC_LIST_VIEW[1]"),
         (text('ListView_galleryIDC_LIST_VIEW().SelectItemByName("Bearing A");'),)),
    Step("and one more", click("dialog:lists", "IDC_LIST_VIEW[4]", holding="ctrl"),
         (text('ListView_galleryIDC_LIST_VIEW().AddToSelectionByName("Pinion 12");'),)),
)

TREES = gallery(
    "trees", "Trees",
    Step("selected", click("dialog:trees", "IDC_TREE[1|2]"),
         (text('TreeCtrl_galleryIDC_TREE().SelectItem("1|2");'),)),
    Step("renamed", click("dialog:trees", "IDC_TREE_RENAME"), (pressed("Rename"),)),
    # Deliberately without a semicolon: that is the statement.
    Step("typed", lambda stage: (stage.user.type("Drive 2"), stage.user.key("Return")),
         (text('TreeCtrl_galleryIDC_TREE().ItemByNumPath("1|2").Text = "Drive 2"'),)),
)

TABS = gallery(
    "tabs", "Tabs",
    Step("of Windows", click("dialog:tabs", "IDC_TABS[2]"), (text("TabCtrl_galleryIDC_TABS().SelectItem(2);"),)),
    Step("of the host's library", click("dialog:tabs", "IDC_TABS_BCG[1]"),
         (text('TabCtrl_galleryIDC_TABS_BCG().SelectItemByName("Assembly");'),)),
    Step("of the host's grids", click("dialog:tabs", "IDC_TABS_GX[3]"),
         (text('TabCtrl_galleryIDC_TABS_GX().SelectItemByName("Drawing");'),)),
)

SLIDERS = gallery(
    "sliders", "Sliders",
    # Wine reports the end of one drag twice.
    Step("dragged", drag_by("dialog:sliders", "IDC_SLIDER_HORIZONTAL[thumb]", 60),
         (Repeatable(r"TrackBar_galleryIDC_SLIDER_HORIZONTAL\(\)\.Pos = \d+;"),)),
)

DOCUMENTS = Scene("Documents", (
    Step("a new one", showing(choose("File", "IDM_FILE_NEW"), "document:2"),
         (text("TBB_New_CtrlN().Checked = true;"),)),
    Step("closed with Ctrl+F4", closing(keys("ctrl+F4"), "document:2"), (text("ActiveDocument().Close();"),)),
))

CONTROLS = Session(
    "controls", "Windows, dialogs, menus and every standard control",
    (IN_THE_VIEW, BY_KEYBOARD, SHAPE_DIALOG, CHILD_DIALOGS, MODELESS, MENUS,
     BUTTONS, EDITS, COMBOS, LISTS, TREES, TABS, SLIDERS, DOCUMENTS),
    ends_by_itself=False)


# ---- modelling ----------------------------------------------------------------------------------

OPEN, TABLE, OPTIONS = "dialog:open", "dialog:table", "dialog:options"
STANDARD, DRAW = "IDC_TOOLBAR_STANDARD", "IDC_TOOLBAR_DRAW"
MODEL_VIEW = ("document:2", "IDC_VIEW")


def tree(statement):
    return text(f"CADTree_samplecadIDC_CAD_TREE().{statement};")


MODEL = Scene("A model", (
    Step("Ctrl+O", showing(keys("ctrl+o"), OPEN), (command("samplecad.IDM_FILE_OPEN"),)),
    Step("its name, and Open", showing(closing(lambda stage: (stage.user.type("gearbox.scm"),
                                                              click(OPEN, "IDOK")(stage)), OPEN), "document:2"),
         (r'OpenSaveDialog\(\)\.File\("Z:.*\\\\gearbox\.scm"\);',)),
    Step("as large as it goes", click("frame", f"{STANDARD}[IDM_VIEW_HOME]"), (text("TBB_Home().Click();"),)),
    Step("turned", drag(*MODEL_VIEW, (150, 150), (210, 130)), (CAMERA,)),
))

PARTS = Scene("Its parts", (
    Step("selected in the tree", click("pane", "IDC_CAD_TREE[1|2|4]"), (tree('SelectItem("1|2|4")'),)),
    Step("hidden", click("pane", "IDC_CAD_TREE[Seal:eye]"), (tree('ItemByNumPath("1|2|5").Visible = false'),)),
    Step("checked", click("pane", "IDC_CAD_TREE[Bolt_1:check]"), (tree('ItemByNumPath("1|3|1").Checked = true'),)),
    Step("starred", click("pane", "IDC_CAD_TREE[Wheel_20:star]"), (tree('ItemByNumPath("1|2|2").Starred = true'),)),
    Step("renamed in the grid", type_into_cell("pane", "IDC_PROPERTY_GRID[1,2]", "Pinion 14"),
         (text('GXGrid_samplecadIDC_PROPERTY_GRID().SetText(1, 2, "Pinion 14");'),)),
    Step("all in a table", showing(photographed(keys("ctrl+t")), TABLE), (command("samplecad.IDM_VIEW_TABLE"),)),
    Step("one renamed there", type_into_cell(TABLE, "IDC_OBJECT_TABLE[5,1]", "Wheel 24"),
         (text('GXGrid_samplecadIDC_OBJECT_TABLE().SetText(5, 1, "Wheel 24");'),)),
    Step("close", closing(click(TABLE, "IDCANCEL"), TABLE), (pressed("Close"),)),
    Step("a new one", click("frame", f"{DRAW}[IDM_DRAW_GEAR]"), (text("TBB_Gear().Click();"),)),
    Step("seen from the right", drop_down("frame", f"{STANDARD}[IDM_VIEW_ORIENTATION]", "IDM_VIEW_RIGHT"),
         (text("TBB_Right_Ctrl2().Checked = true;"),)),
))

SETTINGS = Scene("Settings", (
    Step("from the menu", showing(choose("Tools", "IDM_TOOLS_OPTIONS"), OPTIONS),
         (text("TBB_Options().Checked = true;"),)),
    Step("no axes", click(OPTIONS, "IDC_OPTION_TREE[Display|Axes]"),
         (text('OptionTree_samplecadIDC_OPTION_TREE().GetItemByPath("Display|Axes").Checked = false;'),)),
    Step("OK", closing(click(OPTIONS, "IDOK"), OPTIONS), (pressed("OK"),)),
))

THE_END = Scene("The end", (
    Step("saved", click("frame", f"{STANDARD}[IDM_FILE_SAVE]"), (text("TBB_Save().Click();"),)),
    Step("exit", lambda stage: (stage.user.click(stage.point("menubar", "File")),
                                stage.user.click(stage.point("menu", "IDM_FILE_EXIT")),
                                stage.host.wait_for_end()),
         (text("TBB_Exit().Checked = true;"),)),
))

MODELLING = Session("modelling", "A model is opened, changed and saved", (MODEL, PARTS, SETTINGS, THE_END),
                    ends_by_itself=True)

SESSIONS = (CONTROLS, MODELLING)
