"""The install tree holds what it promises, and a program of a customer's builds against it and runs beside it.

    install_test.py TREE COMPILER [EMULATOR]
"""

import pathlib
import subprocess
import sys
import tempfile
import unittest

TREE, COMPILER, *EMULATOR = [pathlib.Path(argument) for argument in sys.argv[1:4]]
del sys.argv[1:]
PROGRAMS = TREE / "bin" / "x64"
HEADERS = TREE / "include" / "RecorderHooks"

FILES = """
    bin/x64/RecorderHooks.dll
    bin/x64/SampleCad.exe
    bin/x64/mrmap.exe
    bin/x64/mrrec.exe
    file/ui_recording/ui_consts.js
    file/ui_recording/ui_map.rcz
    include/RecorderHooks/model/mrRecorder.h
    include/RecorderHooks/namer/mrIDNamer.h
    lib/libRecorderHooks.dll.a
""".split()

# A recorder program in its shortest form: it asks the library, which looks for the map beside itself.
CUSTOMER = """
int main() {
  mrRecorder recorder;
  std::printf("%s\\n", recorder.get_namer().get_definition(1203, "IDC_", 101, "samplecad").GetString());
}
"""


def run(program, *arguments):
    result = subprocess.run([*map(str, EMULATOR), str(program), *arguments], capture_output=True, text=True, timeout=60)
    return result.returncode, result.stdout.strip()


class InstallTree(unittest.TestCase):
    def test_holds_every_file(self):
        self.assertEqual([], [name for name in FILES if not (TREE / name).is_file()])

    def test_holds_no_program_of_the_build(self):
        names = {path.name for path in PROGRAMS.iterdir()}
        self.assertEqual([], [name for name in names if "test" in name])

    def test_map_tool_finds_the_map_beside_it(self):
        self.assertEqual((0, "samplecad.IDC_RADIUS"),
                         run(PROGRAMS / "mrmap.exe", "lookup", "1203", "--dialog", "IDD_SHAPE", "--module", "samplecad"))

    def test_programs_tell_one_version(self):
        versions = set()
        for name in ("mrrec", "mrmap", "SampleCad"):
            status, text = run(PROGRAMS / f"{name}.exe", "--version")
            self.assertEqual((0, name), (status, text.split()[0]))
            versions.add(text.split()[1])
        self.assertEqual(1, len(versions), versions)

    def test_customer_builds_against_all_headers_and_runs(self):
        headers = sorted(path.relative_to(HEADERS).as_posix() for path in HEADERS.rglob("*.h"))
        self.assertTrue(headers)
        program = PROGRAMS / "customer_of_install_test.exe"
        self.addCleanup(program.unlink, missing_ok=True)
        with tempfile.TemporaryDirectory() as scratch:
            source = pathlib.Path(scratch) / "customer.cpp"
            source.write_text("".join(f'#include "{header}"\n' for header in headers) + "#include <cstdio>\n" + CUSTOMER)
            subprocess.run([str(COMPILER), "-std=gnu++17", "-Wall", "-Wextra", "-Werror", "-static", f"-I{HEADERS}",
                            str(source), "-o", str(program), str(TREE / "lib" / "libRecorderHooks.dll.a")],
                           check=True, timeout=60)
        self.assertEqual((0, "samplecad.IDC_RADIUS"), run(program))


if __name__ == "__main__":
    unittest.main()
