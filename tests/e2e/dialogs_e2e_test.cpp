// End to end: dialogs of one template, open at the same time.
#include "apps/SampleCad/samplecad.dev/resource.h"
#include "tests/support/e2e.h"

#include <gtest/gtest.h>

using Statements = std::vector<std::string>;

namespace {

class TwoNotes : public testing::Test {
protected:
  TwoNotes() { stop_clock_of(host); }

  void type_into(HWND note, const std::string& text) {
    user.click(control_of(note, IDC_NOTE_TEXT));
    user.type(text);
  }

  mrSampleCad host{"--dialog note --dialog note"};
  const HWND first = host.wait_for_dialog("Annotation 1");
  const HWND second = host.wait_for_dialog("Annotation 2");
  mrRecording recording{host};
  mrUser& user = recording.user;
};

}  // namespace

TEST_F(TwoNotes, TypedInTurnAreStatementsOfTheirOwn) {
  type_into(first, "a");
  type_into(second, "b");
  type_into(first, "c");
  EXPECT_EQ((Statements{"Text = \"a\";", "Text = \"b\";", "Text = \"ac\";"}), recording.finish());
  EXPECT_EQ((Statements{"  Main_SampleCad().SetFocus();", "  Edit_1241().Text = \"a\";",
                        "  Edit_1241_1().Text = \"b\";", "  Edit_1241().Text = \"ac\";"}),
            recording.script_lines());
  for (const std::string title : {"Annotation 1", "Annotation 2"})
    EXPECT_NE(std::string::npos, recording.script().find("ChildDialog(\"" + title + "\")."))
        << recording.script();
}
