# SPDX-License-Identifier: GPL-3.0-or-later
# Measures the built programs and writes docs/performance.md. scripts/bench runs it in the project's root.
import collections
import datetime
import json
import math
import os
import pathlib
import platform
import re
import resource
import shutil
import subprocess
import sys
import tempfile
import textwrap
import time

ROOT = pathlib.Path().resolve()
BUILD = ROOT / "build"
KELVO, SPIDEV, SIM, SURVEY = (BUILD / name for name in ("kelvo", "kelvo-spidev", "kelvo-sim", "kelvo-survey"))
SPIDEV_SIM, WATCH_SPIDEV_SIM = BUILD / "tests/kelvo-spidev-sim", BUILD / "tests/kelvo-watch-spidev-sim"
WATCH_SIM = BUILD / "kelvo-watch-sim"
BUS, BESIDE = BUILD / "bench/kelvo-bench-bus", BUILD / "bench/kelvo-bench-beside"
IMAGES = 5796 + 521448 + 530180

work = pathlib.Path(tempfile.mkdtemp(prefix="kelvo-bench-"))
document = []
missed = []


def say(*lines):
    for line in lines:
        print(line, flush=True)
        document.append(line)


def section(title, text):
    say(title, "", *textwrap.wrap(" ".join(text.split()), 120, break_on_hyphens=False), "")


def table(head, *rows):
    say("| " + " | ".join(head) + " |", "|---" + "|--:" * (len(head) - 1) + "|")
    for row in rows:
        say("| " + " | ".join(f"{cell:,}" if isinstance(cell, int) else str(cell) for cell in row) + " |")
    say("")


def want(what, met):
    """A wanted figure: returns the word for the table, and adds a line at the end if the figure is not reached."""
    if not met:
        missed.append(what)
    return "yes" if met else "NO"


def run(command, environment=None):
    done = subprocess.run([str(word) for word in command], cwd=work, env={**os.environ, **(environment or {})},
                          stdin=subprocess.DEVNULL, capture_output=True, text=True)
    if done.returncode != 0:
        sys.exit(f"scripts/bench: {' '.join(map(str, command))}: exit status {done.returncode}\n{done.stderr}".rstrip())
    return done


# ---- The simulated board ------------------------------------------------------------------------------------------

def board(broadcast=None):
    """The environment of a run of kelvo-sim that starts on a booted board, or on one in reset."""
    state = work / "board.json"
    state.unlink(missing_ok=True)
    if (work / "booted.json").exists():
        shutil.copy(work / "booted.json", state)
    environment = {"KELVO_SIM_STATE": str(state), "KELVO_SIM_BROADCAST": "", "KELVO_SIM_TRACE": ""}
    if broadcast is not None:
        (work / "air.json").write_text(json.dumps({**broadcast, "chip": {"always_ready": True}}))
        environment["KELVO_SIM_BROADCAST"] = str(work / "air.json")
    return environment


def ensemble(index, services, components=1):
    entries = [{"id": 4096 + i, "label": f"Programme {i}",
                "components": [{"tmid": 0, "subchannel": i % 64, "type": 63}] * components} for i in range(services)]
    return {"index": index, "signal": {"rssi": 40, "fic_quality": 100}, "lists": [{"version": 1, "services": entries}]}


def bus_bytes(options, environment):
    run([SIM, *options], {**environment, "KELVO_SIM_TRACE": str(work / "trace")})
    status_read = 7  # of every run, before its actions
    return int(re.search(r"total bytes (\d+)", (work / "trace").read_text())[1]) - status_read


# ---- Counting instructions ----------------------------------------------------------------------------------------

# Functions of the simulated board, which replaces the bcm2835 library.
LIBRARY = re.compile(r"bcm2835_(peri_\w+|gpio_\w+|delay\w*|init|close|spi_(begin|end|set\w+|chipSelect|transfern))$")


# Functions of the simulated kernel, which replaces the real one.
KERNEL = re.compile(r"__wrap_(open|open64|fopen|fopen64|close|ioctl|clock_gettime|clock_nanosleep)$")


def count(command, *, function=None, at_start=True, environment=None, library=LIBRARY):
    """Instructions in user space: all, without those of the simulated board, and those of the split transfer itself;
    then the number of calls of each function of the board (`library`), by caller and function. Counted from the start,
    inside `function`, or where the program switches counting on."""
    profile = work / "profile"
    options = ["--tool=callgrind", "--compress-strings=no", "--compress-pos=no", f"--callgrind-out-file={profile}"]
    if function:
        options.append(f"--toggle-collect={function}")
    elif not at_start:
        options.append("--collect-atstart=no")
    run(["valgrind", *options, *command], {"LD_BIND_NOW": "" if at_start and not function else "1",
                                           **(environment or {})})
    total = simulated = split = 0
    calls = collections.Counter()
    caller = callee = ""
    called = False  # the next line is the cost of a call
    with open(profile) as lines:
        for line in lines:
            if line.startswith("fn="):
                caller = line[3:].strip()
            elif line.startswith("cfn="):
                callee = line[4:].strip()
            elif line.startswith("calls="):
                called = True
                if library.match(callee) and not library.match(caller):
                    calls[caller, callee] += int(line[6:].split()[0])
            elif line.startswith("totals:"):
                total = int(line.split()[1])
            elif line[:1].isdigit():
                cost = int(line.split()[1])
                if called and library.match(callee) and not library.match(caller):
                    simulated += cost
                if not called and caller.startswith("bcm2835_spi_transfernb_noCS"):
                    split += cost
                called = False
    return total, total - simulated, split, calls


def exponent(points):
    xs, ys = [math.log(n) for n, _ in points], [math.log(cost) for _, cost in points]
    mx, my = sum(xs) / len(xs), sum(ys) / len(ys)
    return sum((x - mx) * (y - my) for x, y in zip(xs, ys)) / sum((x - mx) ** 2 for x in xs)


# ---- Sections -----------------------------------------------------------------------------------------------------

def head():
    compiler, counter = (run([tool, "--version"]).stdout.splitlines()[0] for tool in ("g++", "valgrind"))
    section("# Performance", f"""
        Made by `scripts/bench` on {datetime.date.today()} with {compiler} on {platform.machine()}, optimised build.
        Instructions are those in user space, counted by callgrind ({counter}). Ratios are taken in one run. Figures
        that depend on the machine are in the last sections.""")


def bus():
    section("## Bus", """
        On the simulated board's clock, with a chip that is always ready, at 7.8125 MHz (1.024 µs a byte). *Least* is
        computed only from the bytes of the commands and replies, one poll for clear-to-send each, and the fixed
        waits. Where an operation polls until the chip is ready, the times of the simulated chip are used (a tune 180
        ms with a signal and 250 ms without, a service list 450 ms later). The ensembles of the scans carry 20
        services of one component. The test `Bus.CostsNoMoreThanFixedBytesAndWaits` checks that no row exceeds its
        minimum.""")
    say(*run([BUS]).stdout.splitlines(), "")


def processor():
    transferred = bus_bytes(["-b", "D"], board({}))
    _, boot_own, boot_split, _ = count([SIM, "-b", "D"], function="power_up_and_load_fw*", environment=board({}))
    run([SIM, "-b", "D"], board())
    shutil.copy(work / "board.json", work / "booted.json")
    eight = {"ensembles": [ensemble(i, 20) for i in range(8)]}
    scanned = bus_bytes(["-u"], board(eight))
    _, scan_own, _, _ = count([SIM, "-u"], function="dab_full_scan*", environment=board(eight))
    section("## Processor", """
        The boot and the scan of 8 ensembles from above, as runs of `kelvo-sim`. Only the program's own code is
        counted, not the simulated board: split transfer, staging, decoding. The scan needs no split transfer; its
        output lines and its file are included.""")
    table(["", "Bus bytes", "Instructions", "Per byte"],
          ["boot, DAB", transferred, boot_own, f"{boot_own / transferred:.1f}"],
          ["of these in the split transfer's loop", "", boot_split, f"{boot_split / transferred:.1f}"],
          ["scan, ensembles: 8", scanned, scan_own, f"{scan_own / scanned:.1f}"])


def through_kernel():
    bus_bytes(["-b", "D"], board({}))
    transactions = int(re.search(r"total transactions (\d+)", (work / "trace").read_text())[1])
    boot = [SPIDEV_SIM, "-b", "D"]
    own = count(boot, function="power_up_and_load_fw*", environment=board({}), library=KERNEL)[1]
    message = "sim::open_transaction()"
    calls = count(boot, environment=board({}), library=re.compile(f"{KERNEL.pattern}|{re.escape(message)}"))[3]
    messages = sum(number for (_, called), number in calls.items() if called == message)
    by_program = collections.Counter()
    for (caller, called), number in calls.items():
        if not caller.startswith("sim::"):  # the simulated board opens files as well
            by_program[called] += number
    others = by_program.pop("__wrap_ioctl") - messages
    status_read = 1  # of every run, after the boot
    section("### Through the kernel's drivers", """
        The same boot with `kelvo-spidev`, on the simulated kernel. The table has the program's own instructions, and
        the system calls of the whole run. A message has one transfer, and the kernel moves its bytes.""")
    table(["", "Boot, DAB", "One for each, as wanted"],
          ["instructions", own, ""],
          ["transactions", transactions - status_read, ""],
          ["messages to spidev", messages - status_read,
           want("messages of a boot through the kernel", messages == transactions)],
          ["other calls of ioctl: mode, reset line", others, ""],
          ["other system calls: open, close, clock, sleep", by_program.total(), ""])


def pieces():
    names = ["split_transfer", "one_call_transfer", "driver_json", "rapidjson_json", "rapidjson_compact_json",
             "nlohmann_json"]
    cost = {name: count([BESIDE, name], at_start=False)[0] for name in names}
    section("### Split transfer", """
        4096 bytes, compared with the bcm2835 library's transfer in one call, both on registers that are always
        ready. The loops are the same, but the split transfer calls the library's functions for each register access,
        and the library has them inlined. It is kept this way: the registers belong to the library, and a byte takes
        1024 ns on the bus.""")
    table(["Transfer of 4096 bytes", "Instructions", "Ours to it"],
          ["split transfer", cost["split_transfer"], "1.00"],
          ["`bcm2835_spi_transfern`", cost["one_call_transfer"],
           f"{cost['split_transfer'] / cost['one_call_transfer']:.2f}"])

    def row(what, name):
        wanted = want(f"JSON beside {what}", cost["driver_json"] <= cost[name]) if "rapidjson" in name else ""
        return [what, cost[name], f"{cost['driver_json'] / cost[name]:.2f}", wanted]

    section("### Service list as JSON", """
        A list of 145 services with one component each, starting from the bytes of the chip's reply; the other
        writers start from decoded records. All write the same members and values. They break lines at other places
        (ours puts `},{` on one line); RapidJSON's Writer breaks none, which makes its text shorter.""")
    table(["Writer", "Instructions", "Ours to it", "Not more, as wanted"], row("driver", "driver_json"),
          row("RapidJSON PrettyWriter, no indent", "rapidjson_json"),
          row("RapidJSON Writer, compact", "rapidjson_compact_json"),
          row("nlohmann ordered_json, dump(0)", "nlohmann_json"))


def start_up():
    ours = count([KELVO, "--version"])[0]
    section("## Start-up", """
        `--version`, from the dynamic loader's first instruction. The C++ library is linked into `kelvo` and
        `kelvo-spidev` (`KELVO_STATIC_RUNTIME`), since dynamic linking of the shared one would take most
        of the start-up time. gpiodetect is plain C with one small library.""")
    spidev = count([SPIDEV, "--version"])[0]
    rows = [["kelvo", ours, "1.00", ""], ["kelvo-spidev", spidev, f"{ours / spidev:.2f}", ""]]
    for name in ["gpiodetect", "v4l2-ctl", "flashrom"]:
        cost = count([name, "--version"])[0]
        wanted = want(f"start-up beside {name}", ours < cost) if name != "gpiodetect" else ""
        rows.append([name, cost, f"{ours / cost:.2f}", wanted])
    table(["Program", "Instructions", "Ours to it", "Less, as wanted"], *rows)


def growth():
    scans = []
    for n in [1, 2, 5, 10, 20, 41]:
        air = {"frequencies": [174928 + 1712 * i for i in range(n)], "ensembles": [ensemble(i, 20) for i in range(n)]}
        scans.append((n, count([SIM, "-u"], function="dab_full_scan*", environment=board(air))[1]))
    lists = []
    for n in [1, 2, 5, 10, 20, 50, 100, 145, 169]:
        air = {"ensembles": [ensemble(1, n, components=0)]}
        own = count([SIM, "-f", "1", "-g"], function="Si468x_digital_service_list::*", environment=board(air))[1]
        lists.append((n, own))
    section("## Growth", """
        The program's own instructions for growing input, and the exponent of the fitted power law (1 is linear).
        Every frequency of these scans carries an ensemble of 20 services; the scan file always has 41 entries, which
        dominate the cost of a short scan. The lists are read and written as JSON; their services have no components,
        so that 169 fit.""")
    for what, points in [("Scan, frequencies", scans), ("Service list, services", lists)]:
        table([what, *[str(n) for n, _ in points], "Exponent"],
              ["instructions", *[cost for _, cost in points], f"{exponent(points):.2f}"],
              ["for each", *[cost // n for n, cost in points], ""])


def memory():
    timed = run(["/usr/bin/time", "-f", "%M", SIM, "-u"], board())
    peak = int(timed.stderr.split()[-1]) * 1024

    def stripped(program):
        run(["strip", "-o", work / "stripped", program])
        return (work / "stripped").stat().st_size - IMAGES

    section("## Memory and size", f"""
        Peak resident memory (`/usr/bin/time`, maximum resident set) of a scan of the built-in broadcast, and the sizes
        of the stripped programs without the {IMAGES:,} bytes of firmware images.""")
    table(["", "Bytes", "Under 6 MB, as wanted"],
          ["peak of a full scan, kelvo-sim", peak, want("memory of a full scan", peak < 6_000_000)],
          ["kelvo, with the C++ library in it", stripped(KELVO), ""],
          ["kelvo-spidev, likewise", stripped(SPIDEV), ""], ["kelvo-sim", stripped(SIM), ""])


def times():
    def best(options, program=SIM):
        spans = []
        for _ in range(20):
            environment = board()
            start = time.perf_counter()
            run([program, *options], environment)
            spans.append(time.perf_counter() - start)
        return f"{min(spans) * 1000:.1f} ms"

    section("## Times on this machine", """
        Runs of `kelvo-sim` with the built-in broadcast, including the start of the process, best of 20. On the board's
        clock, bus and waits of a boot take 941.4 ms; here they take no time. The second table has medians of processor
        time by Google Benchmark, with the pieces run in turn.""")
    table(["Run", "Wall time"], ["boot, DAB", best(["-b", "D"])],
          ["boot, DAB, `kelvo-spidev` on the simulated kernel", best(["-b", "D"], SPIDEV_SIM)],
          ["full scan", best(["-u"])])
    found = json.loads(run([BESIDE, "--benchmark_format=json", "--benchmark_min_time=0.05",
                            "--benchmark_repetitions=15", "--benchmark_enable_random_interleaving=true",
                            "--benchmark_report_aggregates_only=true"]).stdout)
    median = {entry["run_name"]: entry["cpu_time"] / 1000 for entry in found["benchmarks"]
              if entry["aggregate_name"] == "median"}

    def row(what, name, ours):
        return [what, f"{median[name]:.0f} µs", f"{median[ours] / median[name]:.2f}"]

    table(["Piece", "Time", "Ours to it"], row("split transfer", "split_transfer", "split_transfer"),
          row("`bcm2835_spi_transfern`", "one_call_transfer", "split_transfer"),
          row("JSON, driver", "driver_json", "driver_json"),
          row("JSON, RapidJSON PrettyWriter", "rapidjson_json", "driver_json"),
          row("JSON, RapidJSON Writer, compact", "rapidjson_compact_json", "driver_json"),
          row("JSON, nlohmann", "nlohmann_json", "driver_json"))


def survey():
    files = [work / f"{i}.json" for i in range(1000)]
    run([SIM, "-b", "D", "-u"], board({"ensembles": [ensemble(i, 15) for i in range(1, 7)]}))
    (work / "ensemblescan__.json").rename(files[0])
    for file in files[1:]:
        shutil.copy(files[0], file)

    def cost(command):
        runs = [run(["/usr/bin/time", "-f", "%e %M", *command]).stderr.split()[-2:] for _ in range(3)]
        return min(float(seconds) for seconds, _ in runs), max(int(kilobytes) for _, kilobytes in runs)

    jq = cost(["jq", "-c", ".", *files])
    one = cost([SURVEY, "--json", files[0]])
    size = files[0].stat().st_size
    section("## Scans to JSON and CSV", f"""
        1,000 scan files of 90 services, {size * 1000 / 1e6:.0f} MB, with labels in ASCII so that they are also
        valid JSON, compared with `jq -c .` ({run(["jq", "--version"]).stdout.strip()}). Wall time, best of three, and
        peak resident memory.""")
    rows = []
    for option in ["--json", "--csv"]:
        seconds, kilobytes = cost([SURVEY, option, *files])
        wanted = want(f"time of {option} beside jq", seconds < jq[0])
        wanted_memory = want(f"memory of {option}", kilobytes < one[1] + 1000)
        rows.append([f"`kelvo-survey {option}`", f"{seconds:.2f} s", wanted, f"{kilobytes:,} KB", wanted_memory])
    table(["", "Time", "Less than jq, as wanted", "Memory", "As for one file, as wanted"], *rows,
          ["`jq -c .`", f"{jq[0]:.2f} s", "", f"{jq[1]:,} KB", ""],
          ["`kelvo-survey --json`, one file", f"{one[0]:.2f} s", "", f"{one[1]:,} KB", ""])


def watch():
    # The state is kept in memory: the disk would be most of it.
    with tempfile.NamedTemporaryFile(dir="/dev/shm", suffix=".json") as state:
        run([SIM, "-b", "D", "-f", "33"], board() | {"KELVO_SIM_STATE": state.name})
        environment = board() | {"KELVO_SIM_STATE": state.name, "KELVO_SIM_REALTIME": "0"}

        def samples(number):
            return [WATCH_SPIDEV_SIM, "--json", "-i", "0", "-n", number]

        def by_program(number):
            calls = count(samples(number), environment=environment, library=KERNEL)[3]
            return sum(calls for (caller, _), calls in calls.items() if not caller.startswith("sim::"))

        def processor_ms(command):
            before = resource.getrusage(resource.RUSAGE_CHILDREN)
            run(command, environment)
            after = resource.getrusage(resource.RUSAGE_CHILDREN)
            return (after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime) * 1000

        def peak(number):
            done = run(["/usr/bin/time", "-f", "%M %e", WATCH_SIM, *samples(number)[1:]], environment)
            kilobytes, seconds = done.stderr.split()[-2:]
            return int(kilobytes), float(seconds)

        calls = (by_program(21) - by_program(1)) // 20
        alone = sorted(processor_ms([SPIDEV_SIM, "-d"]) for _ in range(21))[10]
        each = (processor_ms(samples(2001)) - processor_ms(samples(1))) / 2000
        few, many = peak(1_000), peak(100_000)
    section("## Reception as it changes", """
        Samples of `kelvo-watch --json` on a tuned DAB chip, their cost on the bus above. System calls and processor
        time on the simulated kernel, whose own work on the state of the board is part of the time, beside a run of
        `kelvo-spidev -d`. Memory is the peak (maximum resident set) of `kelvo-watch-sim`, which takes its samples
        without a wait.""")
    table(["", "Figure", "As wanted"], ["system calls of a sample through the kernel", calls, ""],
          ["processor time of a sample", f"{each:.2f} ms", want("time of a sample", each < alone)],
          ["processor time of `kelvo-spidev -d`, with its start", f"{alone:.2f} ms", ""],
          ["memory after 1,000 samples", f"{few[0]:,} KB", ""],
          ["memory after 100,000 samples", f"{many[0]:,} KB", want("memory of samples", many[0] < few[0] + 200)],
          ["JSON lines a second", int(100_000 / many[1]), ""])


def remote():
    section("## The radio in a browser", """
        `kelvo-remote-sim` on a tuned DAB chip, in real time; browsers are connections on the same machine. The board is
        busy with a tune that does not end.""")
    rows = json.loads(run([sys.executable, ROOT / "bench/remote.py", BUILD]).stdout)
    table(["", "Figure", "As wanted"], *([what, figure, want(what, met)] for what, figure, met in rows))


try:
    for part in (head, bus, processor, through_kernel, pieces, start_up, growth, memory, times, survey, watch, remote):
        part()
except OSError as error:
    sys.exit(f"scripts/bench: {error}")
finally:
    shutil.rmtree(work)
while document[-1] == "":
    document.pop()
pathlib.Path("docs/performance.md").write_text("\n".join(document) + "\n")
for what in missed:
    print(f"scripts/bench: not as wanted: {what}", file=sys.stderr)
sys.exit(1 if missed else 0)
