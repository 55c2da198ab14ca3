#!/usr/bin/env python3
"""The computed tables of docs/scaling.md: what a sweep costs on many cores, from measured constants.

scripts/scaling_model.py [seconds of one simulation on one core]
"""
import sys

# Measured; docs/scaling.md tells how. Seconds and bytes.
SIMULATION = 9.0e-3  # one simulation in lanes, its lines packed
HAND_OUT = 1.5e-6  # a task, by rank 0
KEEP = 19e-6  # a record, by rank 0
MESSAGES = 100e-6  # of a task: ask, task, record at rank 0, an upper bound
START = 0.60  # of the ranks of one node
START_RANK = 0.05  # more for each rank on a node
RAW = 1200  # bytes of a simulation's counts, 300 lines
RESULT = 335  # bytes of them in the result
BYTE_WRITTEN = 0.55e-9  # joining a byte of the result

# Chosen in the program.
PORTION = 0.15
LANES = 32

# Assumed.
CORES_A_NODE = 64
START_NODE = 0.004  # more for each further node
NETWORK = 1e9  # bytes a second into rank 0
DISK = 5e8  # bytes a second to the shared disk


def seconds(simulations, cores, simulation=SIMULATION):
    """Start, the longer of work and rank 0's share, the last portion, and the result."""
    start = START + START_RANK * min(cores, CORES_A_NODE)
    start += START_NODE * max(cores / CORES_A_NODE - 1, 0)
    groups = max(simulations / LANES, 1)
    in_a_portion = max(int(PORTION / (LANES * simulation)), 1)
    tasks = max(groups / in_a_portion, 1)
    work = simulations * simulation / min(cores, max(simulations, 1))
    # Counts of portions come in, are kept, and leave once more to be packed.
    gather = tasks * (HAND_OUT + KEEP + MESSAGES) * 2
    gather += simulations * (2 * RAW + RESULT) * (1 / NETWORK + 1 / DISK)
    tail = min(PORTION, simulations * simulation)
    write = simulations * RESULT * (BYTE_WRITTEN + 2 / DISK)
    return start + max(work, gather) + tail + write


def main():
    simulation = float(sys.argv[1]) if len(sys.argv) > 1 else SIMULATION
    cores = [1, 10, 100, 1000, 10000]
    print("| simulations | " + " | ".join(f"{c} cores" for c in cores) + " |")
    print("|---|" + "---|" * len(cores))
    for exponent in range(3, 8):
        one = seconds(10**exponent, 1, simulation)
        cells = []
        for c in cores:
            t = seconds(10**exponent, c, simulation)
            cells.append(f"{t:.3g} s ({100 * one / t / c:.0f} %)")
        print(f"| 10^{exponent} | " + " | ".join(cells) + " |")


main()
