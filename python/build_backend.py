# SPDX-License-Identifier: Apache-2.0
"""Builds the wheel for `pip install .` with CMake (PEP 517). Needs no network and no other package.

The wheel contains the module, our libraries beside it in kvgamut/lib, and the program in kvgamut/lib/kv3dviewer. It
loads Qt and the other libraries of the system.

Settings for pip: --config-settings=build-dir=FOLDER keeps the build tree; --config-settings=cmake=-DNAME=VALUE is passed on (with ; between several).
"""

import base64
import hashlib
import os
import re
import subprocess
import sys
import sysconfig
import tempfile
import zipfile

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
COMPONENTS = ("Library", "Tools", "Python")


def _project():
    """The plain values of the table [project]. Python 3.9 has no reader of TOML."""
    with open(os.path.join(ROOT, "pyproject.toml"), encoding="utf-8") as file:
        table = file.read().split("[project]")[1]
    return dict(re.findall(r'^([\w-]+) = "(.*)"$', table, re.MULTILINE))


def _metadata():
    project = _project()
    return (
        f"Metadata-Version: 2.1\nName: {project['name']}\nVersion: {project['version']}\n"
        f"Summary: {project['description']}\nLicense: Apache-2.0\nRequires-Python: {project['requires-python']}\n"
        "Requires-Dist: numpy\n"
    )


def _install(build, prefix, settings):
    """Builds in the folder `build`, and installs below `prefix`, whose last part is the name of the module."""
    configure = ["cmake", "-S", ROOT, "-B", build, "-G", "Ninja"]
    configure += ["-DCMAKE_BUILD_TYPE=Release", "-DBUILD_TESTING=OFF", "-DKV3DVIEWER_BUILD_APPS=ON"]
    configure += ["-DKV3DVIEWER_PYTHON=ON", f"-DPython_EXECUTABLE={sys.executable}", f"-DCMAKE_INSTALL_PREFIX={prefix}"]
    configure += ["-DCMAKE_INSTALL_LIBDIR=lib", "-DKV3DVIEWER_INSTALL_PYTHONDIR=.."]
    configure += [word for word in (settings or {}).get("cmake", "").split(";") if word]
    subprocess.run(configure, check=True)
    subprocess.run(["cmake", "--build", build], check=True)
    for component in COMPONENTS:
        subprocess.run(["cmake", "--install", build, "--component", component, "--strip"], check=True)


def _files(folder):
    """The files below a folder, also behind links, which a wheel cannot contain."""
    for parent, folders, files in os.walk(folder, followlinks=True):
        folders.sort()
        for name in sorted(files):
            yield os.path.join(parent, name)


def _record(name, content):
    digest = base64.urlsafe_b64encode(hashlib.sha256(content).digest()).rstrip(b"=").decode()
    return f"{name},sha256={digest},{len(content)}\n"


def build_wheel(wheel_directory, config_settings=None, metadata_directory=None):
    project = _project()
    version = f"cp{sys.version_info[0]}{sys.version_info[1]}"
    tag = f"{version}-{version}-" + re.sub(r"\W", "_", sysconfig.get_platform())
    info = f"{project['name']}-{project['version']}.dist-info"
    wheel = f"{project['name']}-{project['version']}-{tag}.whl"
    with tempfile.TemporaryDirectory() as folder:
        stage = os.path.join(folder, "stage")
        build = (config_settings or {}).get("build-dir") or os.path.join(folder, "build")
        _install(build, os.path.join(stage, "kvgamut"), config_settings)
        record = ""
        with zipfile.ZipFile(os.path.join(wheel_directory, wheel), "w", zipfile.ZIP_DEFLATED) as archive:

            def add(name, content, mode):
                nonlocal record
                entry = zipfile.ZipInfo(name, (1980, 1, 1, 0, 0, 0))
                entry.external_attr = (0o100000 | mode) << 16
                entry.compress_type = zipfile.ZIP_DEFLATED
                archive.writestr(entry, content)
                record += _record(name, content)

            for path in _files(stage):
                with open(path, "rb") as file:
                    add(os.path.relpath(path, stage), file.read(), os.stat(path).st_mode & 0o777)
            add(f"{info}/METADATA", _metadata().encode(), 0o644)
            generator = "Wheel-Version: 1.0\nGenerator: kvgamut\nRoot-Is-Purelib: false\n"
            add(f"{info}/WHEEL", f"{generator}Tag: {tag}\n".encode(), 0o644)
            archive.writestr(f"{info}/RECORD", record + f"{info}/RECORD,,\n")
    return wheel


def build_sdist(sdist_directory, config_settings=None):
    raise NotImplementedError("install from the tree: pip install .")
