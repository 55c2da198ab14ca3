#!/usr/bin/env bash
# A sweep as a Slurm job array, and the job that joins its shards when all are there.
#   submit.sh SHARDS MODEL OUT [options of 'ostrand-tool sweep']
# OSTRAND_TOOL names the program where it is not in the PATH of the nodes. Prints the number of the
# job that makes OUT.
set -euo pipefail
if [ $# -lt 3 ]; then
    echo "usage: submit.sh SHARDS MODEL OUT [options]" >&2
    exit 2
fi
here=$(cd "$(dirname "$0")" && pwd)
shards=$1
model=$2
out=$3
shift 3
array=$(sbatch --parsable --array="1-$shards" "$here/sweep.slurm" "$model" "$out" "$@")
sbatch --parsable --dependency="afterok:$array" "$here/merge.slurm" "$out" "$shards"
