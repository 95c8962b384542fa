"""What bench/measure makes of what other programs print, on lines that they did print, and what it refuses."""

import contextlib
import io
import os
import sys
import tempfile
import unittest
from pathlib import Path
from unittest import mock

sys.path.insert(0, str(Path(__file__).resolve().parents[2] / "bench" / "measure"))

import arguments
import inputs
import passes
import quick
import shapes
import start

BUILDER = {"rose::bindSupplier", "rose::bindSupertype"}

START = """
	ffffffff81000c82 asm_exc_page_fault
	           13608 _dl_load_cache_lookup
	           1bccb _dl_start_final (inlined)
	           1ab77 _start
"""
SCANNING = """
	           112be rose::InputLayer::refill
	           11684 rose::Matcher::nextOfAnotherBatch
	           10696 rose::scan<rose::yylex()::{lambda(int, char const*, unsigned long)#1}>
	ffffffffffffffff [unknown]
"""
SCANNING_SEEN_WHOLE = """
	           13fcf rose::N_AVX3::findPlaces
	            fa10 rose::RoseLexImport (inlined)
	           10160 KelIbmRationalRose40ImportDllInterface::run
"""
BUILDING = """
	           bfeaa std::_Rb_tree_insert_and_rebalance
	           2e857 rose::bindSupertype
	           121d1 rose::bindSupplier
	           10471 rose::dispatch
	           10696 rose::scan<rose::yylex()::{lambda(int, char const*, unsigned long)#1}>
"""
TRANSCODING = """
	           2d091 convertText
	           35e77 (anonymous namespace)::Transcoding::post_process
	            f481 rose::convertTexts
	           10160 KelIbmRationalRose40ImportDllInterface::run
"""


class Passes(unittest.TestCase):
    def test_a_sample_belongs_to_the_first_pass_of_its_functions(self):
        stacks = passes.stacks_of("\n\n".join([START, SCANNING, SCANNING_SEEN_WHOLE, BUILDING, TRANSCODING]))
        self.assertEqual(
            [passes.pass_of(functions, BUILDER) for functions in stacks],
            [passes.REST, passes.SCANNING, passes.SCANNING, passes.BUILDING, "transcoding"],
        )
        found = passes.shares_in(stacks, BUILDER)
        self.assertAlmostEqual(found[passes.SCANNING], 40)
        self.assertAlmostEqual(sum(found.values()), 100)

    def test_there_are_no_shares_when_the_scan_is_out_of_sight(self):
        self.assertEqual(passes.shares_in(passes.stacks_of(START + "\n\n" + TRANSCODING), BUILDER), {})
        self.assertEqual(passes.shares_in(passes.stacks_of(""), BUILDER), {})
        with mock.patch.multiple(passes, has=lambda _: True, model=lambda *_: "", shares=lambda _: {}):
            self.assertIn("Not measured", str(passes.section(64, ("plain", "dense"))))


class OtherPrograms(unittest.TestCase):
    def test_the_shapes_are_those_that_make_model_tells_of(self):
        told = """
Positionals:
  shape TEXT                  The form of the model:
                                plain: as real models are; counted in classes
                                packages-flat: one package with all classes; counted in classes
                                diagrams: one package with all diagrams; counted in diagrams

Options:
  -h,--help                   Print this help message and exit
"""
        found = shapes.shapes_told(told)
        self.assertEqual(list(found), ["plain", "packages-flat", "diagrams"])
        self.assertEqual(found["diagrams"], shapes.Shape("one package with all diagrams", "diagrams"))

    def test_functions_have_names_without_arguments_and_libraries_without_folders(self):
        told = """
7,043,437 (100.0%)  PROGRAM TOTALS
  293,640 ( 4.17%)  ./elf/../sysdeps/x86_64/dl-machine.h:_dl_relocate_object
  242,788 ( 3.45%)  ./elf/./elf/dl-reloc.c:_dl_relocate_object [/usr/lib/x86_64-linux-gnu/ld-linux-x86-64.so.2]
   13,910 ( 0.20%)  ???:rose::dispatch(int) [/opt/petal/lib/libKelIbmRationalRose40Import.so]
    5,758 ( 0.08%)  ???:(anonymous namespace)::convert(KelString const&) [/opt/petal/lib/libkel.so.0.1.0]
"""
        self.assertEqual(
            start.functions_told(told),
            [
                (293640, "_dl_relocate_object", "ld-linux-x86-64.so.2"),
                (242788, "_dl_relocate_object", "ld-linux-x86-64.so.2"),
                (13910, "rose::dispatch", "libKelIbmRationalRose40Import.so"),
                (5758, "convert", "libkel.so.0.1.0"),
            ],
        )


class Floors(unittest.TestCase):
    def ends_well(self, *attempts):
        """With the ratios of each attempt; tells also which were asked for last."""
        asked = []

        def ratios(wanted):
            asked.append([name for name in ("fast", "slow") if wanted(name)])
            return attempts[len(asked) - 1]

        with tempfile.TemporaryDirectory() as folder:
            floors = Path(folder, "floors.json")
            floors.write_text('{"fast": 2, "slow": 1}', encoding="ascii")
            with mock.patch.multiple(quick, FLOORS=floors, ratios=ratios), contextlib.redirect_stdout(io.StringIO()):
                return quick.passes(), asked

    def test_only_what_missed_is_measured_again(self):
        self.assertEqual(self.ends_well({"fast": 3, "slow": 1}), (True, [["fast", "slow"]]))
        again = [["fast", "slow"], ["slow"]]
        self.assertEqual(self.ends_well({"fast": 3, "slow": 0.5}, {"fast": 1, "slow": 1}), (True, again))
        self.assertEqual(self.ends_well({"fast": 3, "slow": 0.5}, {"slow": 0.6}), (False, again))


class Inputs(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)

    def real(self, folder):
        with mock.patch.dict(os.environ, {inputs.REAL_MODELS: str(folder)}):
            return inputs.found_models()

    def test_an_input_is_made_anew_when_its_origin_has_changed(self):
        with mock.patch.object(inputs, "DATA", self.folder):
            for origin, text, expected in (("a", "1", "1"), ("a", "2", "1"), ("b", "3", "3")):
                path = inputs.kept("text", ".txt", origin, lambda path, text=text: path.write_text(text))
                self.assertEqual(path.read_text(), expected)
        self.assertEqual(len(list(self.folder.iterdir())), 1)

    def test_real_models_are_those_of_a_folder_that_has_some(self):
        self.assertEqual(self.real(""), [])
        for useless in ("models", self.folder / "missing", self.folder):
            with self.assertRaises(ValueError):
                self.real(useless)
        (self.folder / "empty.mdl").touch()
        (self.folder / "some.MDL").write_text("(object Petal)")
        self.assertEqual(self.real(self.folder), [self.folder / "some.MDL"])


class Arguments(unittest.TestCase):
    def test_bad_ones_are_refused_in_one_line(self):
        for words in (
            "--rounds 0", "--rounds x", "--scanned 0", "--imported 1", "--largest 1", "--largest 0", "--portion nan",
            "--quick --record", "--quick --rounds 3", "--record --output x", "--output /missing/file", "--output /",
            "--unknown", "word",
        ):
            told = io.StringIO()
            with self.subTest(words), mock.patch.object(sys, "argv", ["run", *words.split()]):
                with contextlib.redirect_stderr(told), self.assertRaises(SystemExit) as ended:
                    arguments.arguments()
                self.assertEqual(ended.exception.code, 2)
                self.assertEqual(told.getvalue().count("\n"), 1)


if __name__ == "__main__":
    unittest.main()
