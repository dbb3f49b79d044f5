#include "tests/support/ready_file.h"

#include "tests/support/test_window.h"

#include <gtest/gtest.h>

#include <sstream>

// Each line: PLACE NAME WINDOW LEFT TOP RIGHT BOTTOM. An empty name stands for any.
bool mrReadyFile::find(const std::string& place, const std::string& name, RECT& rect) const {
  std::istringstream lines(read_file(path()));
  for (std::string line; std::getline(lines, line);) {
    std::istringstream words(line);
    std::string line_place;
    std::string line_name;
    std::string window;
    RECT found = {};
    if (words >> line_place >> line_name >> window >> found.left >> found.top >> found.right >>
            found.bottom &&
        line_place == place && (name.empty() || line_name == name)) {
      rect = found;
      return true;
    }
  }
  return false;
}

bool mrReadyFile::lists(const std::string& place, const std::string& name) const {
  RECT rect = {};
  return find(place, name, rect);
}

RECT mrReadyFile::rect(const std::string& place, const std::string& name) const {
  RECT rect = {};
  EXPECT_TRUE(wait_until([&] { return find(place, name, rect); }))
      << "SampleCad does not show " << place << " " << name << "; it shows\n"
      << read_file(path());
  return rect;
}

POINT mrReadyFile::middle(const std::string& place, const std::string& name) const {
  const RECT found = rect(place, name);
  return {(found.left + found.right) / 2, (found.top + found.bottom) / 2};
}

POINT mrReadyFile::button(const std::string& toolbar, const std::string& button) const {
  return middle("frame", toolbar + "[" + button + "]");
}

void mrReadyFile::wait_until_gone(const std::string& place) const {
  EXPECT_TRUE(wait_until([&] { return !lists(place, ""); })) << "SampleCad still shows " << place;
}
