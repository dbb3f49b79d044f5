"""The include checker accepts what the table permits and names everything else."""

import pathlib
import sys
import tempfile
import unittest

sys.dont_write_bytecode = True
sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "tools"))
import check_includes


class IncludeDirections(unittest.TestCase):
    def setUp(self):
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        self.root = pathlib.Path(scratch.name)
        for header in ("framework/CString.h", "host/mrZip.h", "hooks/mrChannel.h", "namer/mrIDNamer.h",
                       "model/mrActionFactory.h", "model/mrRecorder.h", "model/private.h", "script/mrText.h",
                       "controls/mrButton.h", "apps/mrrec/options.h", "apps/mrmap/options.h"):
            self.write(header, "")
        self.write("framework/CMakeLists.txt", "mr_install_headers(framework CString.h)\n")
        self.write("model/CMakeLists.txt", "mr_install_headers(model mrActionFactory.h\n  mrRecorder.h)\n")

    def write(self, name, text):
        path = self.root / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text)

    def problems(self, source, include):
        self.write(source, f"#include {include}\n")
        return check_includes.check(self.root)

    def assert_permitted(self, source, include):
        self.assertEqual([], self.problems(source, include))
        (self.root / source).unlink()

    def assert_refused(self, source, include):
        problems = self.problems(source, include)
        self.assertEqual(1, len(problems), problems)
        self.assertTrue(problems[0].startswith(f"{source}:1: {include[1:-1]} "), problems[0])
        (self.root / source).unlink()

    def test_includes_downwards_and_beside_are_permitted(self):
        for source, include in (("controls/a.cpp", '"script/mrText.h"'), ("controls/a.cpp", '"host/mrZip.h"'),
                                ("controls/a.cpp", '"controls/mrButton.h"'), ("script/a.cpp", '"model/mrRecorder.h"'),
                                ("model/a.cpp", '"namer/mrIDNamer.h"'), ("namer/a.cpp", '"host/mrZip.h"'),
                                ("tests/model/a.cpp", '"controls/mrButton.h"'), ("hooks/a.cpp", "<commctrl.h>"),
                                ("framework/a.h", "<windows.h>"), ("framework/a.h", "<vector>")):
            self.assert_permitted(source, include)

    def test_includes_upwards_are_refused(self):
        for source, include in (("script/a.cpp", '"controls/mrButton.h"'), ("script/a.cpp", '"host/mrZip.h"'),
                                ("model/a.cpp", '"script/mrText.h"'), ("model/a.cpp", '"host/mrZip.h"'),
                                ("namer/a.cpp", '"hooks/mrChannel.h"'), ("hooks/a.cpp", '"model/mrActionFactory.h"'),
                                ("framework/a.h", '"host/mrZip.h"'), ("framework/a.h", "<commctrl.h>")):
            self.assert_refused(source, include)

    def test_an_installed_header_includes_installed_headers_only(self):
        self.assert_permitted("model/mrRecorder.h", '"model/mrActionFactory.h"')
        self.assert_permitted("model/mrRecorder.h", '"framework/CString.h"')
        self.assert_refused("model/mrRecorder.h", '"model/private.h"')
        self.assert_permitted("model/mrRecorder.cpp", '"model/private.h"')

    def test_only_the_dispatcher_knows_the_factory_interface(self):
        self.assert_permitted("hooks/mrDispatcher.cpp", '"model/mrActionFactory.h"')
        self.assert_refused("hooks/mrDispatcher.cpp", '"model/mrRecorder.h"')

    def test_the_factory_interface_includes_the_framework_alone(self):
        self.write("model/mrActionFactory.h", '#include "framework/CString.h"\n')
        self.assertEqual([], check_includes.check(self.root))
        self.write("model/mrActionFactory.h", '#include "hooks/mrChannel.h"\n')
        self.assertEqual(1, len(check_includes.check(self.root)))

    def test_programs_see_installed_headers_and_their_own_only(self):
        self.assert_permitted("apps/mrrec/main.cpp", '"model/mrRecorder.h"')
        self.assert_permitted("apps/mrrec/main.cpp", '"apps/mrrec/options.h"')
        self.assert_refused("apps/mrrec/main.cpp", '"model/private.h"')
        self.assert_refused("apps/mrrec/main.cpp", '"apps/mrmap/options.h"')

    def test_the_sample_host_knows_nothing_of_recording(self):
        self.assert_permitted("apps/SampleCad/main.cpp", '"host/mrZip.h"')
        self.assert_refused("apps/SampleCad/main.cpp", '"model/mrRecorder.h"')

    def test_includes_are_written_from_the_root(self):
        self.assert_refused("model/a.cpp", '"mrRecorder.h"')
        self.assert_refused("model/a.cpp", "<model/mrRecorder.h>")
        self.assert_refused("model/a.cpp", '"model/missing.h"')


if __name__ == "__main__":
    unittest.main()
