"""What tools/check_includes.py refuses and what it accepts, on small trees made for the purpose."""

import contextlib
import io
import os
import sys
import tempfile
import unittest

ROOT = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..")
sys.dont_write_bytecode = True
sys.path.insert(0, os.path.join(ROOT, "tools"))

import check_includes  # noqa: E402


def check(files):
    """The exit code and the output for a tree of the given files."""
    with tempfile.TemporaryDirectory() as root:
        for path, content in files.items():
            full = os.path.join(root, path)
            os.makedirs(os.path.dirname(full), exist_ok=True)
            with open(full, "w", encoding="utf-8") as file:
                file.write(content)
        output = io.StringIO()
        with contextlib.redirect_stdout(output):
            code = check_includes.main([root])
        return code, output.getvalue()


class CheckIncludes(unittest.TestCase):
    def refuses(self, path, content, reason=""):
        with self.subTest(path=path, content=content):
            code, output = check({path: content})
            self.assertEqual(code, 1, output)
            self.assertIn(path + ":", output)
            self.assertIn(reason, output)

    def accepts(self, path, content):
        with self.subTest(path=path, content=content):
            code, output = check({path: content})
            self.assertEqual(code, 0, output)

    def test_arrows_that_run_down_are_accepted(self):
        for path, include in [
            ("discovery/A.h", "discovery/B.h"),
            ("discovery/A.h", "platform/Clock.h"),
            ("ledge/A.cpp", "discovery/B.h"),
            ("organize/A.cpp", "discovery/B.h"),
            ("info/A.cpp", "platform/Clock.h"),
            ("updates/A.cpp", "platform/WallClock.h"),
            ("app/mainLinux.cpp", "updates/B.h"),
            ("app/A.cpp", "ledge/B.h"),
            ("app/A.cpp", "organize/B.h"),
            ("app/A.cpp", "info/B.h"),
            ("app/A.cpp", "discovery/B.h"),
            ("platform/A.h", "platform/B.h"),
        ]:
            self.accepts(path, f'#include "{include}"\n')

    def test_arrows_that_run_up_or_sideways_are_refused(self):
        for path, include in [
            ("discovery/A.h", "ledge/B.h"),
            ("discovery/A.h", "app/B.h"),
            ("ledge/A.cpp", "organize/B.h"),
            ("organize/A.cpp", "ledge/B.h"),
            ("organize/A.cpp", "info/B.h"),
            ("info/A.cpp", "discovery/B.h"),
            ("info/A.cpp", "app/B.h"),
            ("updates/A.cpp", "discovery/B.h"),
            ("info/A.cpp", "updates/B.h"),
        ]:
            self.refuses(path, f'#include "{include}"\n', "the arrows between folders run down")

    def test_the_logic_includes_neither_tests_nor_desktop_programs(self):
        self.refuses("ledge/A.cpp", '#include "tests/B.h"\n')
        self.refuses("app/A.cpp", '#include "desktop/B.h"\n')

    def test_the_logic_knows_no_world(self):
        for folder in ["discovery", "ledge", "organize", "info", "updates", "app"]:
            for world in ["memory", "icu", "threads", "linux", "macos"]:
                self.refuses(f"{folder}/A.cpp", f'#include "platform/{world}/B.h"\n', "only main knows")

    def test_main_alone_chooses_a_world(self):
        self.accepts("app/main.cpp", '#include "platform/linux/B.h"\n')
        self.accepts("app/mainMac.mm", '#import "platform/macos/B.h"\n')
        self.accepts("app/mainLinux.cpp", '#include <QApplication>\n#include <cstdio>\nvoid f() { std::fputs("", stderr); }\n')
        self.refuses("app/Main.cpp", '#include <QApplication>\n')
        self.refuses("app/main.h", '#include "platform/linux/B.h"\n')
        self.refuses("ledge/main.cpp", '#include "platform/linux/B.h"\n')

    def test_interfaces_include_only_the_standard_library_and_each_other(self):
        self.accepts("platform/A.h", "#include <chrono>\n#include <functional>\n")
        self.refuses("platform/A.h", '#include "discovery/B.h"\n')
        self.refuses("platform/A.h", '#include "platform/memory/B.h"\n')
        self.refuses("platform/A.h", "#include <unicode/ucol.h>\n")
        self.refuses("platform/A.cpp", "#include <thread>\n")

    def test_the_logic_uses_no_library(self):
        for header in ["QString", "unicode/ucol.h", "unistd.h", "stdio.h", "AppKit/AppKit.h"]:
            self.refuses("ledge/A.cpp", f"#include <{header}>\n", "the C++ standard library alone")

    def test_worlds_may_use_interfaces_and_what_worlds_share(self):
        self.accepts("platform/linux/A.cpp", '#include <QString>\n#include "platform/Clock.h"\n')
        self.accepts("platform/linux/A.cpp", '#include "platform/icu/B.h"\n#include "platform/threads/B.h"\n')
        self.accepts("platform/macos/A.mm", '#import <AppKit/AppKit.h>\n#include "platform/threads/B.h"\n')
        self.accepts("platform/memory/A.h", '#include <mutex>\n#include "platform/icu/B.h"\n')
        self.accepts("platform/threads/A.cpp", "#include <thread>\n")
        self.accepts("platform/icu/A.cpp", "#include <unicode/ucol.h>\n")

    def test_worlds_do_not_know_the_logic(self):
        for world in ["memory", "icu", "threads", "linux", "macos"]:
            self.refuses(f"platform/{world}/A.cpp", '#include "discovery/B.h"\n', "must not know who uses them")

    def test_worlds_do_not_know_one_another(self):
        self.refuses("platform/linux/A.cpp", '#include "platform/memory/B.h"\n', "do not know one another")
        self.refuses("platform/memory/A.cpp", '#include "platform/linux/B.h"\n', "do not know one another")
        self.refuses("platform/icu/A.cpp", '#include "platform/macos/B.h"\n', "do not know one another")
        self.refuses("platform/memory/A.cpp", '#include "platform/threads/B.h"\n', "may not use")
        self.refuses("platform/macos/A.mm", '#include "platform/icu/B.h"\n', "may not use")

    def test_the_world_in_memory_uses_no_library_of_its_own(self):
        self.refuses("platform/memory/A.cpp", "#include <QString>\n", "the C++ standard library alone")
        self.refuses("platform/threads/A.cpp", "#include <pthread.h>\n", "the C++ standard library alone")

    def test_the_logic_includes_no_header_of_threads_output_or_chance(self):
        for header in ["thread", "mutex", "iostream", "fstream", "random", "cstdlib", "filesystem", "condition_variable",
                       "future", "cstdio", "ctime", "print", "semaphore"]:
            self.refuses("info/A.cpp", f"#include <{header}>\n", "the logic")

    def test_the_logic_calls_no_clock_thread_environment_or_output(self):
        for code in ["std::chrono::steady_clock::now()", "system_clock::now()", 'getenv("A")', 'std::getenv("A")',
                     "std::this_thread::sleep_for(1s)", "nanosleep(0, 0)", 'printf("a")', 'std::fprintf(f, "a")',
                     'std::puts("a")', "std::cout << 1", "std::cerr << 1", "std::thread t(f)", "std::async(f)", "rand()",
                     "std::random_device d", "std::time(nullptr)"]:
            self.refuses("discovery/A.cpp", f"void f() {{ {code}; }}\n", "the logic")
            self.accepts("platform/linux/A.cpp", f"void f() {{ {code}; }}\n")

    def test_comments_and_texts_are_not_code(self):
        self.accepts("ledge/A.cpp", '// #include "app/B.h", steady_clock\n/* getenv\n#include <thread>\n*/\n')
        self.accepts("ledge/A.cpp", 'auto a = "printf(\\"";\nauto b = R"x(std::cout " )x";\n')
        self.refuses("ledge/A.cpp", 'auto a = "//";\n#include <thread>\n', "A.cpp:2:")
        self.refuses("ledge/A.cpp", "auto a = 1'000;\nauto b = std::cout;  // it's\n", "A.cpp:2:")

    def test_names_that_only_look_alike_are_accepted(self):
        self.accepts("ledge/A.cpp", "mainQueue.async(f); snapshot(brand(1)); int printfLike; sleepFor(1);\n")

    def test_includes_give_the_path_from_the_root(self):
        self.refuses("discovery/A.cpp", '#include "A.h"\n', "the path from the root")
        self.refuses("discovery/A.cpp", '#include "../platform/Clock.h"\n', "the path from the root")
        self.refuses("discovery/A.cpp", '#include "discovery/../app/B.h"\n', "the path from the root")

    def test_every_way_to_write_an_include_is_seen(self):
        for directive in ['#  include "app/B.h"', '  #include"app/B.h"', '#import "app/B.h"', '#include/**/"app/B.h"',
                          '#include "app/B.h" // why', '#include \\\n"app/B.h"', "#include HEADER"]:
            self.refuses("discovery/A.cpp", directive + "\n")

    def test_the_line_is_told(self):
        self.refuses("discovery/A.cpp", '/* a\n b */\n\n#include "app/B.h"\n', 'discovery/A.cpp:4: includes "app/B.h"')

    def test_a_folder_without_a_rule_is_refused(self):
        self.refuses("extras/A.cpp", "#include <string>\n", "there is no rule for this folder")
        self.refuses("platform/haiku/A.cpp", "#include <string>\n", "there is no rule for this folder")

    def test_arrows_between_the_rooms_of_a_world_run_down(self):
        for world in ("linux", "macos"):
            self.accepts(f"platform/{world}/items/A.cpp", f'#include "platform/{world}/system/B.h"\n')
            self.accepts(f"platform/{world}/items/A.cpp", f'#include "platform/{world}/items/B.h"\n#include "platform/C.h"\n')
            self.refuses(f"platform/{world}/system/A.cpp", f'#include "platform/{world}/items/B.h"\n', "rooms run down")
            self.refuses(f"platform/{world}/views/A.cpp", f'#include "platform/{world}/items/B.h"\n', "rooms run down")
            self.refuses(f"platform/{world}/views/A.cpp", f'#include "platform/{world}/B.h"\n', "what is made of it")
            self.accepts(f"platform/{world}/A.cpp", f'#include "platform/{world}/session/B.h"\n')

    def test_a_room_without_a_rule_is_refused(self):
        self.refuses("platform/linux/cellar/A.cpp", "#include <string>\n", "there is no rule for this room")

    def test_tests_and_benchmarks_include_what_they_need(self):
        self.accepts("tests/A.cpp", '#include <thread>\n#include "platform/memory/B.h"\n#include "app/B.h"\n')
        self.accepts("bench/A.cpp", "#include <benchmark/benchmark.h>\n")

    def test_build_trees_are_left_out(self):
        code, output = check({"discovery/A.h": "", "build/dev/discovery/B.h": "#include <thread>\n",
                              "out/CMakeCache.txt": "", "out/discovery/B.h": "#include <thread>\n"})
        self.assertEqual((code, output), (0, "1 files, 0 violations\n"))

    def test_a_tree_without_sources_is_refused(self):
        code, _ = check({"README.md": ""})
        self.assertEqual(code, 1)

    def test_all_violations_are_listed(self):
        code, output = check({"ledge/A.cpp": "#include <thread>\n#include <mutex>\n", "info/A.h": "#include <future>\n"})
        self.assertEqual(code, 1)
        self.assertTrue(output.endswith("2 files, 3 violations\n"), output)


if __name__ == "__main__":
    unittest.main()
