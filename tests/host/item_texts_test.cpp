// Item texts and group combos of another process: what the recorder side of the combo box and list box
// recorders reads. The controls are those of SampleCad's gallery.
#include "apps/SampleCad/gallery.dev/gallery.h"
#include "host/dlxGroupComboHelpers.h"
#include "host/dlxListHelpers.h"
#include "tests/support/e2e.h"

#include <gtest/gtest.h>

namespace {

class GalleryItems : public testing::Test {
protected:
  static void SetUpTestSuite() { s_host = new mrSampleCad("--dialog combos --dialog lists"); }
  static void TearDownTestSuite() {
    delete s_host;
    s_host = nullptr;
  }

  static HWND control(const char* dialog, int id) { return GetDlgItem(s_host->wait_for_dialog(dialog), id); }
  static HWND combo(int id) { return control("Combo boxes", id); }
  static HWND list(int id) { return control("Lists", id); }

  static CString combo_item(int id, int index) {
    return dlxListHelpers::get_combo_item(combo(id), index, false);
  }
  static CString list_item(int id, int index) { return dlxListHelpers::get_list_item(list(id), index, true); }

  static mrSampleCad* s_host;
};

mrSampleCad* GalleryItems::s_host = nullptr;

// A text long enough to show where a buffer of fixed size would cut it; bytes above 127 count once.
const std::string long_text = std::string(298, 'x') + "\xe9\x80";

}  // namespace

TEST_F(GalleryItems, ComboBoxOfAnyStyleGivesItsTexts) {
  for (const int id : {IDC_COMBO_EDIT, IDC_COMBO_LIST, IDC_COMBO_SIMPLE, IDC_COMBO_DISABLED}) {
    EXPECT_EQ(combo_item(id, 0), "Steel") << id;
    EXPECT_EQ(combo_item(id, 6), "Glass \"clear\"") << id;
  }
}

TEST_F(GalleryItems, OwnerDrawnComboBoxWithStringsGivesItsTexts) {
  EXPECT_EQ(combo_item(IDC_COMBO_DRAWN_TEXT, 2), "Copper");
}

TEST_F(GalleryItems, OwnerDrawnComboBoxWithoutStringsHasNoTexts) {
  EXPECT_EQ(combo_item(IDC_COMBO_DRAWN_COLOR, 0), "");
  EXPECT_EQ(combo_item(IDC_COMBO_DRAWN_COLOR, 5), "");
}

TEST_F(GalleryItems, ExtendedComboBoxGivesItsTexts) {
  EXPECT_EQ(combo_item(IDC_COMBO_EXTENDED, 2), "Third");
  EXPECT_EQ(combo_item(IDC_COMBO_GROUP, 1), "Metric");
  EXPECT_EQ(combo_item(IDC_COMBO_GROUP, 6), "1/4\"");
}

TEST_F(GalleryItems, ItemsThatAreNotThereHaveNoText) {
  for (const int index : {-1, 8, 1000})
    EXPECT_EQ(combo_item(IDC_COMBO_LIST, index), "") << index;
  EXPECT_EQ(combo_item(IDC_COMBO_EXTENDED, 3), "");
  for (const int index : {-1, 8, 1000})
    EXPECT_EQ(list_item(IDC_LIST_SINGLE, index), "") << index;
  EXPECT_EQ(dlxListHelpers::get_combo_item(nullptr, 0, false), "");
}

TEST_F(GalleryItems, ListBoxGivesItsTexts) {
  for (const int id : {IDC_LIST_SINGLE, IDC_LIST_MULTIPLE, IDC_LIST_EXTENDED})
    EXPECT_EQ(list_item(id, 3), "Aluminium") << id;
}

TEST_F(GalleryItems, OwnerDrawnListBoxWithoutStringsHasNoTexts) {
  EXPECT_EQ(list_item(IDC_LIST_DRAWN_COLOR, 0), "");
}

TEST_F(GalleryItems, LongTextsComeWhole) {
  SendMessageA(list(IDC_LIST_SINGLE), LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(long_text.c_str()));
  EXPECT_EQ(list_item(IDC_LIST_SINGLE, 8).str(), long_text);
  SendMessageA(combo(IDC_COMBO_SIMPLE), CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(long_text.c_str()));
  EXPECT_EQ(combo_item(IDC_COMBO_SIMPLE, 8).str(), long_text);
}

TEST_F(GalleryItems, OnlyTheMarkedExtendedComboBoxIsAGroupCombo) {
  EXPECT_TRUE(dlxGroupComboHelpers::check_combo_type(combo(IDC_COMBO_GROUP)));
  EXPECT_FALSE(dlxGroupComboHelpers::check_combo_type(combo(IDC_COMBO_EXTENDED)));
  EXPECT_FALSE(dlxGroupComboHelpers::check_combo_type(combo(IDC_COMBO_LIST)));
  EXPECT_FALSE(dlxGroupComboHelpers::check_combo_type(nullptr));
}

struct HeadingCase {
  const char* name;
  int item;
  int heading;
};
constexpr HeadingCase heading_cases[] = {
    {"nothing selected", -1, -1},       {"above all headings", 0, -1},  {"a heading is its own", 1, 1},
    {"first below a heading", 2, 1},    {"last below a heading", 4, 1}, {"the second heading", 5, 5},
    {"below the second heading", 7, 5}, {"past the end", 1000, -1},
};

TEST_F(GalleryItems, HeadingAboveAnItem) {
  for (const HeadingCase& c : heading_cases)
    EXPECT_EQ(dlxGroupComboHelpers::get_item_heading(combo(IDC_COMBO_GROUP), c.item), c.heading) << c.name;
}

TEST_F(GalleryItems, ComboBoxWithoutMarksHasNoHeadings) {
  EXPECT_EQ(dlxGroupComboHelpers::get_item_heading(combo(IDC_COMBO_EXTENDED), 2), -1);
}
