#!/usr/bin/env bash
# Tries the Slurm scripts and the Snakefile of this folder against the real programs, on this
# machine alone and under a folder of their own: a small cluster of munged, slurmctld and slurmd is
# started, used and ended. What cannot be started is told, and why.
#   try.sh [BUILD]      the folder with ostrand-tool and ostrand-mpi; ../../build
# Status 0: all that could be started made the right bytes; 1: something did not.
set -uo pipefail
here=$(cd "$(dirname "$0")" && pwd)
build=$(cd "${1:-$here/../../build}" && pwd) || exit 1
export OSTRAND_TOOL=$build/ostrand-tool OSTRAND_MPI=$build/ostrand-mpi
[ -x "$OSTRAND_TOOL" ] || { echo "no ostrand-tool in $build"; exit 1; }
work=$(mktemp -d)
chmod 755 "$work"
started=()
failures=0

say () { printf 'try: %s\n' "$*"; }
end_all () {
    for ((i = ${#started[@]} - 1; i >= 0; --i)); do kill "${started[i]}" 2>/dev/null; done
    for process in "${started[@]}"; do
        for ((t = 0; t < 50; ++t)); do kill -0 "$process" 2>/dev/null || break; sleep 0.1; done
        kill -9 "$process" 2>/dev/null
    done
    cd /
    rm -rf "$work"
}
trap end_all EXIT
trap 'exit 130' INT TERM

cd "$work" || exit 1
cat >model.ssa <<'MODEL'
duration = 20; [a] = 1 uM -> 6 uM : 1 uM; [b] = 1 uM, 5 uM, 9 uM; [e] = 0.1 uM;
e : a -> c | 5 uM - 30; a + b -> d | 0.5; d -> a | 0.0001; display (a, c, d);
MODEL
"$OSTRAND_TOOL" sweep model.ssa -o expected.gz --replicates 7 || exit 1

check () {   # $1: what, $2: its result
    if cmp -s "$2" expected.gz; then
        say "$1: the same bytes as on one machine"
    else
        say "$1: WRONG, $2 is not what one machine makes"
        failures=$((failures + 1))
    fi
}

missing () { # $@: programs; prints those that are not there
    for program in "$@"; do command -v "$program" >/dev/null 2>&1 || printf '%s ' "$program"; done
}

# ---- Snakemake ---------------------------------------------------------------------------

try_snakemake () {
    local none
    none=$(missing snakemake)
    if [ -n "$none" ]; then say "snakemake is not installed: not tried"; return; fi
    if ! snakemake --version >snake.log 2>&1; then
        say "snakemake does not start: $(tail -n 1 snake.log)"
        return
    fi
    if ! snakemake -s "$here/Snakefile" --cores 2 --quiet --config model=model.ssa out=snake.gz \
            shards=5 options="--replicates 7" tool="$OSTRAND_TOOL" >snake.log 2>&1; then
        say "snakemake: WRONG"; cat snake.log
        failures=$((failures + 1))
        return
    fi
    check "snakemake $(snakemake --version), 5 shards" snake.gz
}

# ---- Slurm -------------------------------------------------------------------------------

free_port () {
    local port
    for ((port = 20000 + RANDOM % 20000; ; ++port)); do
        (exec 3<>"/dev/tcp/127.0.0.1/$port") 2>/dev/null || { echo "$port"; return; }
    done
}

# Starts a daemon in the foreground mode of its kind, behind us. $1: name; the rest: the command.
start () {
    local name=$1
    shift
    "$@" >"$name.out" 2>&1 &
    started+=("$!")
    sleep 0.5
    kill -0 "$!" 2>/dev/null && return 0
    say "$name does not start: $(tail -n 3 "$name.out" "$name.log" 2>/dev/null | tr '\n' ' ')"
    return 1
}

start_slurm () {
    local none me host
    none=$(PATH=$PATH:/usr/sbin missing munged slurmctld slurmd sbatch scontrol)
    if [ -n "$none" ]; then say "Slurm is not tried; not installed: $none"; return 1; fi
    if [ "$(id -u)" != 0 ]; then say "Slurm is not tried: slurmd must be started by root"; return 1; fi
    PATH=$PATH:/usr/sbin
    me=$(id -un)
    host=$(hostname -s)
    mkdir -p munge state spool
    chmod 755 munge
    head -c 1024 /dev/urandom >munge/key
    chmod 600 munge/key
    start munged munged --foreground --force --num-threads=2 --key-file="$work/munge/key" \
        --socket="$work/munge/socket" --pid-file="$work/munge/pid" \
        --log-file="$work/munged.log" --seed-file="$work/munge/seed" || return 1
    cat >slurm.conf <<CONF
ClusterName=trial
SlurmctldHost=$host(127.0.0.1)
SlurmUser=$me
SlurmdUser=$me
AuthType=auth/munge
AuthInfo=socket=$work/munge/socket
CryptoType=crypto/munge
StateSaveLocation=$work/state
SlurmdSpoolDir=$work/spool
SlurmctldPidFile=$work/slurmctld.pid
SlurmdPidFile=$work/slurmd.pid
SlurmctldLogFile=$work/slurmctld.log
SlurmdLogFile=$work/slurmd.log
SlurmctldPort=$(free_port)
SlurmdPort=$(free_port)
ProctrackType=proctrack/linuxproc
TaskPlugin=task/none
SwitchType=switch/none
MpiDefault=none
ReturnToService=2
SelectType=select/cons_tres
SelectTypeParameters=CR_CPU
SchedulerParameters=sched_interval=1,bf_interval=1
NodeName=$host NodeAddr=127.0.0.1 CPUs=$(nproc) State=UNKNOWN
PartitionName=all Nodes=$host Default=YES MaxTime=INFINITE State=UP
CONF
    export SLURM_CONF=$work/slurm.conf
    start slurmctld slurmctld -D -f "$SLURM_CONF" || return 1
    start slurmd slurmd -D -f "$SLURM_CONF" -N "$host" || return 1
    for ((i = 0; i < 60; ++i)); do
        sinfo -h -o %T 2>/dev/null | grep -q '^idle' && return 0
        sleep 0.5
    done
    say "the node does not become idle: $(sinfo -h 2>&1 | tail -n 1) $(tail -n 3 slurmd.log slurmctld.log | tr '\n' ' ')"
    return 1
}

# Waits until a job is over. $1: its number
wait_for_job () {
    local state
    for ((i = 0; i < 240; ++i)); do
        state=$(scontrol show job "$1" 2>/dev/null | sed -n 's/.*JobState=\([A-Z_]*\).*/\1/p')
        case $state in
            ''|COMPLETED|FAILED|CANCELLED|TIMEOUT|NODE_FAIL) return 0 ;;
        esac
        sleep 0.5
    done
    say "job $1 does not end: $state"
}

try_slurm () {
    start_slurm || return
    local version job
    version=$(sbatch --version)
    if ! job=$("$here/submit.sh" 5 model.ssa slurm.gz --replicates 7 2>submit.log); then
        say "$version: WRONG, jobs are not taken: $(cat submit.log)"
        failures=$((failures + 1))
        return
    fi
    wait_for_job "$job"
    check "$version, an array of 5 shards" slurm.gz
    cmp -s slurm.gz expected.gz || cat ostrand-*.log 2>/dev/null

    if [ -n "$(missing mpirun)" ] || [ ! -x "$OSTRAND_MPI" ]; then
        say "ostrand-mpi under Slurm is not tried: no mpirun, or built without MPI"
        return
    fi
    export OMPI_ALLOW_RUN_AS_ROOT=1 OMPI_ALLOW_RUN_AS_ROOT_CONFIRM=1
    job=$(sbatch --parsable --ntasks=2 "$here/mpi.slurm" model.ssa mpi.gz --replicates 7)
    wait_for_job "$job"
    check "$version, ostrand-mpi on 2 ranks" mpi.gz
    cmp -s mpi.gz expected.gz || cat ostrand-mpi-*.log 2>/dev/null
}

try_snakemake
try_slurm
[ $failures = 0 ]
