// The number of every recorder: it stands in each upload, so it never changes.
#include "controls/mrButton.h"
#include "controls/mrCADTree.h"
#include "controls/mrCADView.h"
#include "controls/mrComboBox.h"
#include "controls/mrEdit.h"
#include "controls/mrGXGrid.h"
#include "controls/mrGroupCombo.h"
#include "controls/mrListBox.h"
#include "controls/mrListView.h"
#include "controls/mrLogger.h"
#include "controls/mrOpenSaveDialog.h"
#include "controls/mrOptionTree.h"
#include "controls/mrRibCustomiser.h"
#include "controls/mrTabCtrl.h"
#include "controls/mrToolBar.h"
#include "controls/mrTrackBar.h"
#include "controls/mrTreeView.h"
#include "controls/mrWindow.h"
#include "hooks/mrDispatcher.h"

#include <gtest/gtest.h>

#include <typeinfo>

template <class FACTORY>
static void expect_number(unsigned number) {
  mrActionFactory* const factory = get_factory(number, true);
  ASSERT_NE(nullptr, factory) << number;
  EXPECT_EQ(typeid(FACTORY), typeid(*factory)) << number;
  EXPECT_EQ(number, static_cast<unsigned>(factory->get_factory_type()));
}

TEST(Factories, HaveTheNumbersOfTheirRecords) {
  expect_number<mrWindowFactory>(1);
  expect_number<mrComboBoxFactory>(2);
  expect_number<mrListBoxFactory>(3);
  expect_number<mrListViewFactory>(4);
  expect_number<mrTabCtrlFactory>(5);
  expect_number<mrTrackBarFactory>(6);
  expect_number<mrButtonFactory>(7);
  expect_number<mrEditFactory>(8);
  expect_number<mrTreeViewFactory>(9);
  expect_number<mrCADTreeFactory>(10);
  expect_number<mrOptionTreeFactory>(11);
  expect_number<mrGXGridFactory>(12);
  expect_number<mrCADViewFactory>(13);
  expect_number<mrToolBarFactory>(14);
  expect_number<mrOpenSaveDialogFactory>(15);
  expect_number<mrGroupComboFactory>(16);
  expect_number<mrRibCustomiserFactory>(17);
  expect_number<mrLoggerFactory>(18);
}
