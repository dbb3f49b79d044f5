// What a build looks at itself: whether the new map is whole before it replaces the old one, and whether the
// player can run its constants script.
#pragma once

#include "framework/CString.h"

#include <vector>

class mrMapNamer;
class mrMapStage;

// Throws when a document of this model has no room in the stage.
void expect_room(const mrMapStage& stage, const mrMapNamer& namer);

// Throws, naming it, when one of these documents of the stage, which earlier builds left, cannot be read:
// packed into the new map it would make that unreadable too.
void expect_readable(const mrMapStage& stage, const std::vector<CString>& stale);

// Reads the new map back; throws, naming the file of the target that could not be written, unless archive and
// constants script hold this model whole. Moves the archive aside.
void expect_whole(mrMapStage& stage, const mrMapNamer& namer, const CString& target);

// One line for each group key and each name that the constants script makes no good JScript of.
std::vector<CString> script_warnings(const mrMapNamer& namer);
