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
    ways: tuple = ()      # (window function, the calls that it must lead through from the main window on)


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
    ends_by_itself: bool = False     # the last step ends the host; else Ctrl+Break ends the recording
    pictures_in_a_row: tuple = (1,)  # how the pictures that its steps take are put together

    def ways(self):
        return [way for scene in self.scenes for step in scene.steps for way in step.ways]


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


def click_arrow(stage, place, name):
    """The arrow at the right edge of a toolbar button or a combo box."""
    spot = stage.host.wait_for(place, name)
    stage.user.click((spot.rect[2] - 6, spot.centre[1]))


def drop_down(place, name, command):
    """The arrow of a toolbar button, then a command of the menu under it."""
    def do(stage):
        click_arrow(stage, place, name)
        stage.user.click(stage.point("menu", command))
        stage.host.wait_until_gone("menu", command)
    return do


def drop_down_toolbar(place, name, command):
    """A toolbar button that opens a second toolbar, then a button of that."""
    def do(stage):
        stage.user.click(stage.point(place, name))
        stage.user.click(stage.point("popup", f"window[{command}]"))
        stage.host.wait_until_gone("popup")
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


def types(words):
    return lambda stage: stage.user.type(words)


def retype(place, name, text):
    """Clicks into an edit box, selects what is there and types over it."""
    def do(stage):
        stage.user.click(stage.point(place, name))
        stage.user.key("Home", "shift+End")
        stage.user.type(text)
    return do


def pick(place, name, index):
    """Opens a combo box with its arrow and clicks an item of the list."""
    def do(stage):
        click_arrow(stage, place, name)
        stage.user.click(stage.point("combolist", f"window[{index}]"))
        stage.host.wait_until_gone("combolist")
    return do


def pick_by_keys(place, name, *chords):
    """Opens a list with the mouse and chooses in it with the keyboard."""
    def do(stage):
        stage.user.click(stage.point(place, name))
        stage.user.key(*chords)
    return do


def in_turn(*gestures):
    def do(stage):
        for gesture in gestures:
            gesture(stage)
    return do


def wait_for_a_new_menu(stage, command):
    """A menu with the same command that was just left, by the keyboard, may still be told of where it was."""
    stage.host.wait_until_gone("menu", command)


def choose(*path):
    """A command of the menu bar, by mouse: the names of the menus, then the command."""
    def do(stage):
        wait_for_a_new_menu(stage, path[-1])
        stage.user.click(stage.point("menubar", path[0]))
        for name in path[1:]:
            stage.user.click(stage.point("menu", name))
        stage.host.wait_until_gone("menu", path[-1])
    return do


def choose_in_context(place, name, at, command):
    def do(stage):
        wait_for_a_new_menu(stage, command)
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


def photographed(gesture, place="frame"):
    """Takes a picture of a window for the session's before the gesture."""
    def do(stage):
        stage.screenshot(place)
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

STANDARD, DRAW = "IDC_TOOLBAR_STANDARD", "IDC_TOOLBAR_DRAW"
ON_STANDARD = 'Main_SampleCad().Toolbar("Standard", samplecad.IDC_TOOLBAR_STANDARD)'
ON_DRAW = 'Main_SampleCad().Toolbar("Draw", samplecad.IDC_TOOLBAR_DRAW)'
TOOLBARS = Scene("Toolbars", (
    Step("a button", click("frame", f"{STANDARD}[IDM_VIEW_HOME]"), (text("TBB_Home().Click();"),),
         (("TBB_Home", f'{ON_STANDARD}.GetItemByID("Home", samplecad.IDM_VIEW_HOME)'),)),
    Step("one that stays down", click("frame", f"{STANDARD}[IDM_MOUSE_PAN]"), (text("TBB_Pan().Checked = true;"),),
         (("TBB_Pan", f'{ON_STANDARD}.GetItemByID("Pan", samplecad.IDM_MOUSE_PAN)'),)),
    Step("the menu of one with an arrow", drop_down("frame", f"{STANDARD}[IDM_VIEW_ORIENTATION]", "IDM_VIEW_FRONT"),
         (text("TBB_Front_Ctrl1().Checked = true;"),),
         (("TBB_Front_Ctrl1", f'{ON_STANDARD}.GetItemByID("Orientation", samplecad.IDM_VIEW_ORIENTATION).Expand().'
                              r'GetItemByID("&Front\tCtrl+1", samplecad.IDM_VIEW_FRONT)'),)),
    Step("a toolbar that a button opens", drop_down_toolbar("frame", f"{DRAW}[IDM_DRAW_MORE]", "IDM_DRAW_CONE"),
         (text("TBB_Cone().Click();"),),
         (("TBB_Cone", f'{ON_DRAW}.GetItemByID("More", samplecad.IDM_DRAW_MORE).Expand().'
                       'GetItemByID("Cone", samplecad.IDM_DRAW_CONE)'),)),
))

VIEW_MENU = 'Main_SampleCad().MainMenu().GetItemByID("&View", samplecad.IDM_POPUP_VIEW).Expand()'
MENUS = Scene("Menus", (
    Step("a command two levels deep", choose("View", "Zoom", "IDM_VIEW_ZOOM_FIT"),
         (text("TBB_Fit_F9().Checked = true;"),),
         (("TBB_Fit_F9", f'{VIEW_MENU}.GetItemByID("&Zoom", samplecad.IDM_POPUP_ZOOM).Expand().'
                         r'GetItemByID("&Fit\tF9", samplecad.IDM_VIEW_ZOOM_FIT)'),)),
    Step("a check mark", choose("View", "IDM_VIEW_GRID"), (text("TBB_Grid_CtrlG().Checked = false;"),),
         (("TBB_Grid_CtrlG", VIEW_MENU + r'.GetItemByID("&Grid\tCtrl+G", samplecad.IDM_VIEW_GRID)'),)),
    Step("with the keyboard", in_turn(showing(keys("alt+v"), "menu", "IDM_VIEW_STATUS_BAR"), keys("s")),
         (text("TBB_Status_bar().Checked = false;"),)),
    Step("the view's context menu", choose_in_context(*VIEW, (500, 300), "IDM_VIEW_AXES"),
         (CAMERA, in_view("ContextMenu", 500, 300), text("TBB_Axes().Checked = false;")),
         (("TBB_Axes", 'Main_SampleCad().CurrentContextMenu().GetItemByID("&Axes", samplecad.IDM_VIEW_AXES)'),)),
))


DOCUMENTS = Scene("Documents", (
    Step("a new one", showing(choose("File", "IDM_FILE_NEW"), "document:2"),
         (text("TBB_New_CtrlN().Checked = true;"),)),
    Step("closed with Ctrl+F4", closing(keys("ctrl+F4"), "document:2"), (text("ActiveDocument().Close();"),)),
))

WINDOWS = Session(
    "windows", "Windows, dialogs, toolbars and menus",
    (IN_THE_VIEW, BY_KEYBOARD, SHAPE_DIALOG, CHILD_DIALOGS, MODELESS, TOOLBARS, MENUS, DOCUMENTS))


# ---- every standard control ---------------------------------------------------------------------

def gallery(kind, title, *steps):
    """A dialog of the control gallery, opened from the menu, photographed, and closed with its button."""
    place = f"dialog:{kind}"
    identifier = "TBB_" + title.replace(" ", "_")
    return Scene(title, (
        Step("from the menu", showing(choose("Tools", "Controls", f"IDM_GALLERY_{kind.upper()}"), place),
             (text(f"{identifier}().Checked = true;"),)),
        *steps,
        Step("close", photographed(closing(click(place, "IDCANCEL"), place), place), (pressed("Close"),)),
    ))


BOX = "dialog:buttons"
# The order is a user's who takes his time: for a tenth of a second after a click with the mouse, a button that is
# pushed with Return or the space bar counts as that click, and the states of drawn buttons are not watched.
BUTTONS = gallery(
    "buttons", "Buttons",
    Step("push button, with the space bar", keys("space"), (pressed("Push"),)),
    Step("check box, with Tab and the space bar", keys(*6 * ["Tab"], "space"),
         (text("Hidden_lines().Checked = true;"),)),
    Step("the default button, with Return", keys("Return"), (pressed("Default"),)),
    Step("drawn toggle, with the mouse", click(BOX, "IDC_DRAWN_TOGGLE"), (text("Snap_to_grid().Checked = true;"),)),
    Step("drawn push button", click(BOX, "IDC_DRAWN_PUSH"), (pressed("Drawn"),)),
    Step("one that the host names", click(BOX, "IDC_PUSH_NAMED"), (pressed("NamedButton"),)),
    Step("one without a text", click(BOX, "IDC_PUSH_UNTITLED"), (pressed("Button_galleryIDC_PUSH_UNTITLED"),)),
    Step("check box that the dialog sets", click(BOX, "IDC_CHECK_MANUAL"),
         (text("Set_by_the_dialog().Checked = true;"),)),
    Step("three states", click(BOX, "IDC_CHECK_3STATE"), (text("Three_states().CheckedState = tsCHECKED;"),)),
    Step("and the third of them", click(BOX, "IDC_CHECK_3STATE"),
         (text("Three_states().CheckedState = tsINDETERMINATE;"),)),
    Step("radio button", click(BOX, "IDC_RADIO_BRASS"), (pressed("Brass"),)),
    Step("the next one, with an arrow key", keys("Right"), (pressed("Copper"),)),
    Step("radio button that the dialog sets", click(BOX, "IDC_RADIO_FINE"), (pressed("Fine"),)),
)

BOX = "dialog:edits"
EDITS = gallery(
    "edits", "Edits",
    Step("typed", retype(BOX, "IDC_EDIT", "M8 x 40"), (text('Edit_galleryIDC_EDIT().Text = "M8 x 40";'),)),
    Step("the next one, with Tab", in_turn(keys("Tab"), types("250")),
         (text('Edit_galleryIDC_EDIT_NUMBER().Text = "250";'),)),
    Step("password", retype(BOX, "IDC_EDIT_PASSWORD", "gears"),
         (text('Edit_galleryIDC_EDIT_PASSWORD().Text = "gears";'),)),
    Step("one that the host names", retype(BOX, "IDC_EDIT_NAMED", 'Ada "A"'),
         (text(r'NamedEdit().Text = "Ada \"A\"";'),)),
    Step("two lines", in_turn(click(BOX, "IDC_EDIT_MULTILINE"), types("first"), keys("Return"), types("second")),
         (text(r'Edit_galleryIDC_EDIT_MULTILINE().Text = "first\r\nsecond";'),)),
    Step("up with the arrow beside it", click(BOX, "IDC_SPIN[up]"),
         (text('Edit_galleryIDC_EDIT_SPUN().Text = "1";'),)),
)

BOX = "dialog:combos"
COMBOS = gallery(
    "combos", "Combo boxes",
    Step("list, with the mouse", pick(BOX, "IDC_COMBO_LIST", 2),
         (text('ComboBox_galleryIDC_COMBO_LIST().SelectItemByName("Copper");'),)),
    Step("and with the keyboard", keys("Up"),
         (text('ComboBox_galleryIDC_COMBO_LIST().SelectItemByName("Brass");'),)),
    Step("with an edit, chosen", pick(BOX, "IDC_COMBO_EDIT", 3),
         (text('ComboBox_galleryIDC_COMBO_EDIT().SelectItemByName("Aluminium");'),)),
    Step("with an edit, typed", retype(BOX, "IDC_COMBO_EDIT/Edit", "Tin"), (text('Edit_1001().Text = "Tin";'),),
         (("Edit_1001", "Main_SampleCad().ActiveDialog().ComboBox(gallery.IDC_COMBO_EDIT).Edit(1001)"),)),
    Step("always open", click(BOX, "IDC_COMBO_SIMPLE/ComboLBox[3]"),
         (text('ComboBox_galleryIDC_COMBO_SIMPLE().SelectItemByName("Aluminium");'),)),
    Step("texts drawn by the dialog", pick(BOX, "IDC_COMBO_DRAWN_TEXT", 1),
         (text('ComboBox_galleryIDC_COMBO_DRAWN_TEXT().SelectItemByName("Brass");'),)),
    Step("colours, which have no texts", pick(BOX, "IDC_COMBO_DRAWN_COLOR", 2),
         (text("ComboBox_galleryIDC_COMBO_DRAWN_COLOR().SelectItem(2);"),)),
    Step("groups with headings", pick(BOX, "IDC_COMBO_GROUP", 3),
         (text('GroupCombo_galleryIDC_COMBO_GROUP().SelectItemByName("Metric", "M8");'),)),
    Step("extended", pick(BOX, "IDC_COMBO_EXTENDED", 1),
         (text('ComboBox_galleryIDC_COMBO_EXTENDED().SelectItemByName("Second");'),)),
)

BOX = "dialog:lists"
LISTS = gallery(
    "lists", "Lists",
    Step("one, with the mouse", click(BOX, "IDC_LIST_SINGLE[3]"),
         (text('ListBox_galleryIDC_LIST_SINGLE().SelectItemByName("Aluminium");'),)),
    Step("and with the keyboard", keys("Up"),
         (text('ListBox_galleryIDC_LIST_SINGLE().SelectItemByName("Copper");'),)),
    Step("several, with clicks", in_turn(click(BOX, "IDC_LIST_MULTIPLE[1]"), click(BOX, "IDC_LIST_MULTIPLE[4]")),
         (text('ListBox_galleryIDC_LIST_MULTIPLE().SelectItemByName("Brass");'),
          text('ListBox_galleryIDC_LIST_MULTIPLE().SelectItemByName("Cast iron");'))),
    Step("one of them no more", click(BOX, "IDC_LIST_MULTIPLE[1]"),
         (text('ListBox_galleryIDC_LIST_MULTIPLE().UnselectItemByName("Brass");'),)),
    Step("several, with Ctrl", in_turn(click(BOX, "IDC_LIST_EXTENDED[0]"),
                                       click(BOX, "IDC_LIST_EXTENDED[2]", holding="ctrl")),
         (text('ListBox_galleryIDC_LIST_EXTENDED().SelectItemByName("Steel");'),
          text('ListBox_galleryIDC_LIST_EXTENDED().SelectItemByName("Copper");'))),
    Step("colours, which have no texts", click(BOX, "IDC_LIST_DRAWN_COLOR[1]"),
         (text("ListBox_galleryIDC_LIST_DRAWN_COLOR().SelectItem(1);"),)),
    Step("several of them", in_turn(click(BOX, "IDC_LIST_DRAWN_MULTIPLE[0]"), click(BOX, "IDC_LIST_DRAWN_MULTIPLE[2]")),
         (text("ListBox_galleryIDC_LIST_DRAWN_MULTIPLE().SelectItem(0);"),
          text("ListBox_galleryIDC_LIST_DRAWN_MULTIPLE().SelectItem(2);"))),
    Step("a row of a table", click(BOX, "IDC_LIST_VIEW[1]"),
         (text('ListView_galleryIDC_LIST_VIEW().SelectItemByName("Bearing A");'),)),
    Step("as far as another, with Shift", click(BOX, "IDC_LIST_VIEW[2]", holding="shift"),
         (text('ListView_galleryIDC_LIST_VIEW().AddToSelectionByName("Bearing B");'),)),
    Step("and one more, with Ctrl", click(BOX, "IDC_LIST_VIEW[4]", holding="ctrl"),
         (text('ListView_galleryIDC_LIST_VIEW().AddToSelectionByName("Pinion 12");'),)),
)

BOX = "dialog:trees"
TREES = gallery(
    "trees", "Trees",
    Step("selected and expanded, double click", showing(double_click(BOX, "IDC_TREE[1|2]"), BOX, "IDC_TREE[1|2|2]"),
         (text('TreeCtrl_galleryIDC_TREE().SelectItem("1|2");'),)),
    Step("renamed", click(BOX, "IDC_TREE_RENAME"), (pressed("Rename"),)),
    # Deliberately without a semicolon: that is the statement.
    Step("typed", in_turn(types("Drive 2"), keys("Return")),
         (text('TreeCtrl_galleryIDC_TREE().ItemByNumPath("1|2").Text = "Drive 2"'),)),
    Step("selected with the keyboard", keys("Down", "Down"),
         (text('TreeCtrl_galleryIDC_TREE().SelectItem("1|2|2");'),)),
    Step("expanded with the keyboard", showing(keys("Right"), BOX, "IDC_TREE[1|2|2|1]")),
)

BOX = "dialog:tabs"
TABS = gallery(
    "tabs", "Tabs",
    Step("of Windows", click(BOX, "IDC_TABS[1]"),
         (text('TabCtrl_galleryIDC_TABS().SelectItemByName("Assembly");'),)),
    Step("the next, without a caption, with a key", keys("Right"),
         (text("TabCtrl_galleryIDC_TABS().SelectItem(2);"),)),
    Step("of the host's library", click(BOX, "IDC_TABS_BCG[1]"),
         (text('TabCtrl_galleryIDC_TABS_BCG().SelectItemByName("Assembly");'),)),
    Step("of the host's grids", click(BOX, "IDC_TABS_GX[3]"),
         (text('TabCtrl_galleryIDC_TABS_GX().SelectItemByName("Drawing");'),)),
)

BOX = "dialog:sliders"
SLIDERS = gallery(
    "sliders", "Sliders",
    # Wine reports the end of one drag twice.
    Step("dragged", drag_by(BOX, "IDC_SLIDER_HORIZONTAL[thumb]", 60),
         (Repeatable(r"TrackBar_galleryIDC_SLIDER_HORIZONTAL\(\)\.Pos = \d+;"),)),
    Step("the vertical one, with the keyboard", keys("Tab", "Next"),
         (text("TrackBar_galleryIDC_SLIDER_VERTICAL().Pos = 70;"),)),
)

CONTROLS = Session("controls", "Every standard control, by mouse and keyboard",
                   (BUTTONS, EDITS, COMBOS, LISTS, TREES, TABS, SLIDERS), pictures_in_a_row=(2, 2, 3))


# ---- modelling ----------------------------------------------------------------------------------

OPEN, TABLE, OPTIONS = "dialog:open", "dialog:table", "dialog:options"
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
    Step("another folder", in_turn(click(OPTIONS, "IDC_OPTION_TREE[Files|Folder]"), types(r"D:\parts"), keys("Return")),
         (text(r'OptionTree_samplecadIDC_OPTION_TREE().GetItemByPath("Files|Folder").Text = "D:\\parts";'),)),
    Step("OK", closing(click(OPTIONS, "IDOK"), OPTIONS), (pressed("OK"),)),
))

THE_END = Scene("The end", (
    Step("saved", click("frame", f"{STANDARD}[IDM_FILE_SAVE]"), (text("TBB_Save().Click();"),),
         (("TBB_Save", f'{ON_STANDARD}.GetItemByID("Save", samplecad.IDM_FILE_SAVE)'),)),
    Step("exit", lambda stage: (stage.user.click(stage.point("menubar", "File")),
                                stage.user.click(stage.point("menu", "IDM_FILE_EXIT")),
                                stage.host.wait_for_end()),
         (text("TBB_Exit().Checked = true;"),)),
))

MODELLING = Session("modelling", "A model is opened, changed and saved", (MODEL, PARTS, SETTINGS, THE_END),
                    ends_by_itself=True)

SESSIONS = (WINDOWS, CONTROLS, MODELLING)
