# SPDX-License-Identifier: Apache-2.0
"""Examples in docstrings, in docs/PYTHON.md and in the notebook, and the stubs of the compiled part."""

import ast
import doctest
import inspect
import json
import os
import re
import sys
import types
from pathlib import Path

import kvgamut
import kvgamut._core
import kvgamut._gamut
import kvgamut._render
import numpy as np
import pytest

ROOT = Path(os.environ["KVGAMUT_SOURCE"])


@pytest.mark.parametrize("module", [kvgamut, kvgamut._gamut, kvgamut._render])
def test_examples_in_docstrings(module):
    result = doctest.testmod(module)
    assert result.attempted > 0 and result.failed == 0


def test_everything_public_is_documented():
    for name in kvgamut.__all__:
        assert (getattr(kvgamut, name).__doc__ or "").strip(), name
    for name, member in vars(kvgamut.Gamut).items():
        if not name.startswith("_"):
            assert (getattr(member, "__doc__", None) or inspect.getdoc(getattr(kvgamut.Gamut, name))), name


def test_stubs_have_the_names_and_arguments_of_the_compiled_part():
    stub = ast.parse((Path(kvgamut.__file__).parent / "_core.pyi").read_text(encoding="utf-8"))
    assert (Path(kvgamut.__file__).parent / "py.typed").exists()
    declared = {}

    def declare(body, prefix):
        for node in body:
            if isinstance(node, ast.ClassDef):
                declare(node.body, prefix + node.name + ".")
            elif isinstance(node, ast.FunctionDef):
                declared[prefix + node.name] = [a.arg for a in node.args.args if a.arg != "self"]

    declare(stub.body, "")
    compiled = {}

    def look(owner, prefix):
        for name, member in vars(owner).items():
            if inspect.isclass(member):
                look(member, prefix + name + ".")
            elif isinstance(member, property):
                compiled[prefix + name] = []
            elif not name.startswith("_") and callable(member):
                signature = member.__doc__.splitlines()[0]
                inner = signature[signature.index("(") + 1 : signature.rindex(")")]
                names = re.findall(r"(?:^|, )(\w+): ", inner)
                compiled[prefix + name] = [n for n in names if n not in ("self", "arg0")]

    look(kvgamut._core, "")
    assert declared == compiled


def test_the_program_of_the_guide_runs(tmp_path, monkeypatch):
    guide = (ROOT / "docs" / "PYTHON.md").read_text(encoding="utf-8")
    programs = re.findall(r"```python\n(.*?)```", guide, re.DOTALL)
    first = programs[0]
    assert len(first.strip().splitlines()) < 20
    monkeypatch.chdir(tmp_path)
    for name in ("display.ti3",):
        (tmp_path / name).write_bytes((ROOT / "docs" / "data" / name).read_bytes())
    printed = []
    exec(compile(first, "docs/PYTHON.md", "exec"), {"print": lambda *words: printed.append(words)})
    assert printed and list(tmp_path.glob("*.png"))
    for program in programs[1:]:
        compile(program, "docs/PYTHON.md", "exec")


def shown(value):
    """What a notebook asks a value at the end of a cell for."""
    for name in ("_repr_png_", "_repr_html_"):
        if hasattr(value, name):
            assert getattr(value, name)(), name
    return repr(value)


def test_the_notebook_runs(monkeypatch, capfd):
    """Runs the cells one after the other, and shows the value of the last expression of each."""
    monkeypatch.chdir(ROOT)
    pictures = []
    display = types.ModuleType("IPython.display")
    display.Image = pictures.append
    monkeypatch.setitem(sys.modules, "IPython", types.ModuleType("IPython"))
    monkeypatch.setitem(sys.modules, "IPython.display", display)
    notebook = json.loads((ROOT / "examples" / "python" / "gamuts.ipynb").read_text(encoding="utf-8"))
    names, values = {}, []
    for number, cell in enumerate(notebook["cells"]):
        if cell["cell_type"] != "code":
            continue
        assert cell["outputs"] == [] and cell["execution_count"] is None
        tree = ast.parse("".join(cell["source"]))
        last = ast.Expression(tree.body.pop().value) if isinstance(tree.body[-1], ast.Expr) else None
        exec(compile(tree, f"cell {number}", "exec"), names)
        if last is not None:
            values.append(eval(compile(last, f"cell {number}", "eval"), names))
            shown(values[-1])
    out, err = capfd.readouterr()
    assert err == "" and "sRGB" in out and "outside by" in out
    assert names["spaces"]["ProPhoto"].volume > names["spaces"]["sRGB"].volume
    assert names["display"].report["chart"]["display"] is True
    assert np.array_equal(names["inside"], names["distance"] < 0)
    assert pictures[0].startswith(b"\x89PNG")
