"""What the measuring was done on, in one line."""
import os
import platform
import subprocess


def _value(path, key, separator):
    try:
        with open(path, encoding="utf-8") as lines:
            for line in lines:
                if line.startswith(key):
                    return line.split(separator, 1)[1].strip().strip('"')
    except OSError:
        pass
    return ""


def _answer(*command):
    try:
        return subprocess.run(command, capture_output=True, text=True, check=True).stdout.strip()
    except (OSError, subprocess.CalledProcessError):
        return ""


def described():
    cores = len(os.sched_getaffinity(0))
    memory = int(_value("/proc/meminfo", "MemTotal", ":").split()[0]) / 2**20
    system = _value("/etc/os-release", "PRETTY_NAME", "=") or platform.system()
    toolkit = _answer("pkg-config", "--modversion", "Qt6Core")
    compiler = _answer("c++", "-dumpfullversion")
    return (f"{_value('/proc/cpuinfo', 'model name', ':')}, {cores} cores, {memory:.0f} GiB, {system}"
            + (f", Qt {toolkit}" if toolkit else "") + (f", GCC {compiler}" if compiler else "")
            + ", pictures painted in memory")


def load():
    return os.getloadavg()[0]
