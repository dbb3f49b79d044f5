// The kinds of recorders. The number is the dwData of every upload and the order of the dispatch (17 down to
// 1).
#pragma once

enum mrFactoryType : int {
  factoryWindow = 1,
  factoryComboBox = 2,
  factoryListBox = 3,
  factoryListView = 4,
  factoryTabCtrl = 5,
  factoryTrackBar = 6,
  factoryButton = 7,
  factoryEdit = 8,
  factoryTreeView = 9,
  factoryCadTree = 10,
  factoryOptionTree = 11,
  factoryGxGrid = 12,
  factoryCadView = 13,
  factoryToolBar = 14,
  factoryOpenSaveDialog = 15,
  factoryGroupCombo = 16,
  factoryRibCustomiser = 17,
  factoryLogger = 18,
};

constexpr int first_factory_type = factoryWindow;
// The last type that is offered messages, told of a recording's start and asked for declarations. Deliberate:
// the message logger stands behind it and is left out of all three.
constexpr int last_recorded_factory_type = factoryRibCustomiser;
constexpr int last_factory_type = factoryLogger;

// The type that is asked first about a message. The diagnostic build routes every message to the logger.
#if defined(MR_ROUTE_LOGGER)
constexpr int first_offered_factory_type = factoryLogger;
#else
constexpr int first_offered_factory_type = last_recorded_factory_type;
#endif
