#!/usr/bin/env bash
# The same on a one-node Slurm, which this script starts on the loopback address and stops: one job is killed once and tried again with
# twice the memory, one ends in an ERROR and is not.
#   workflow/slurm_demo.sh      PROGRAM, MAKER, MODELS, DEMO: as for demo.sh
for tool in slurmctld slurmd munged sbatch; do
    command -v "$tool" >/dev/null || PATH=$PATH:/usr/sbin:/sbin
    command -v "$tool" >/dev/null || { echo "No $tool: apt-get install slurm-wlm munge"; exit 77; }
done
[ "$(id -u)" -eq 0 ] || { echo "Slurm's controller is started by root only here."; exit 77; }
. "$(dirname "${BASH_SOURCE[0]}")/demo_common.sh"

site=$(mktemp -d /tmp/slurm_demo.XXXXXX)    # short: the names of sockets are limited
chmod 755 "$site"
stop() {
    local service
    for service in slurmd slurmctld munged; do
        [ ! -s "$site/$service.pid" ] || kill "$(cat "$site/$service.pid")" 2>/dev/null || true
    done
    sleep 1
    rm -rf "$site"
}
trap stop EXIT

mkdir "$site/state" "$site/spool"
head -c 1024 /dev/urandom >"$site/key"
chmod 400 "$site/key"
munged --force --key-file="$site/key" --socket="$site/munge.socket" --pid-file="$site/munged.pid" --log-file="$site/munged.log" \
    --seed-file="$site/seed"
node=$(hostname -s)
cat >"$site/slurm.conf" <<END
ClusterName=demo
SlurmctldHost=$node(127.0.0.1)
SlurmctldPort=${CONTROLLER_PORT:-17917}
SlurmdPort=${NODE_PORT:-17918}
SlurmUser=root
SlurmdUser=root
AuthType=auth/munge
AuthInfo=socket=$site/munge.socket
StateSaveLocation=$site/state
SlurmdSpoolDir=$site/spool
SlurmctldPidFile=$site/slurmctld.pid
SlurmdPidFile=$site/slurmd.pid
SlurmctldLogFile=$site/slurmctld.log
SlurmdLogFile=$site/slurmd.log
ProctrackType=proctrack/linuxproc
TaskPlugin=task/none
MpiDefault=none
ReturnToService=2
SelectType=select/cons_tres
SelectTypeParameters=CR_CPU_Memory
AccountingStorageType=accounting_storage/none
JobAcctGatherType=jobacct_gather/none
MinJobAge=3600
NodeName=$node NodeAddr=127.0.0.1 CPUs=$(nproc) RealMemory=2000
PartitionName=demo Nodes=$node Default=YES State=UP
END
version=v1
[ ! -e /sys/fs/cgroup/cgroup.controllers ] || version=v2
printf 'CgroupPlugin=cgroup/%s\nIgnoreSystemd=yes\n' $version >"$site/cgroup.conf"
export SLURM_CONF=$site/slurm.conf
slurmctld
slurmd
for ((wait = 0; wait < 60; wait++)); do
    sinfo -h -o %T 2>/dev/null | grep -q '^idle$' && break
    sleep 1
done
[ $wait -lt 60 ] || { tail -n 5 "$site/slurmd.log"; fail "Slurm does not come up"; }
sinfo

# The first conversion of run_03 is killed with its whole job; run_04 ends within its first time.
cat >killed_once.sh <<END
#!/bin/bash
case "\$*" in
    *-max*run_03_h.dat) mkdir "$demo/killed" 2>/dev/null && exec scancel --signal=KILL --full "\$SLURM_JOB_ID" ;;
esac
exec "$PROGRAM" "\$@"
END
chmod +x killed_once.sh
head -c 2000 models/run_04_h.dat >cut && mv cut models/run_04_h.dat

configure outputs "$demo/killed_once.sh" >slurm.yaml
status=0
snakemake -s "$workflow/Snakefile" --configfile slurm.yaml --profile "$workflow/profiles/slurm" --latency-wait 10 >slurm.log 2>&1 || status=$?

echo "--- what is not whole, and what was tried twice"
awk -F, 'NR == 1 || $3 != "done" || $11 > 1' outputs/summary.csv | cut -d, -f 1-4,11-
echo "--- the memory of the attempts at run_03, in MB"
scontrol -o show job | sed -n 's/^JobId=\([0-9]*\) .*product=level_max,run=run_03_h .*JobState=\([A-Z]*\) .*MinMemoryNode=\([0-9]*\)M.*/job \1: \3, \2/p' | head -n 2 | tee attempts.txt
read -r first second < <(sed 's/.*: \([0-9]*\),.*/\1/' attempts.txt | paste -sd ' ')
[ "${second:-0}" -eq $((2 * first)) ] || fail "the second attempt had $second MB, the first $first"
[ $status -ne 0 ] || fail "an ERROR, and the status is 0"
[ "$(grep -c ',done,' outputs/summary.csv)" -eq $((3 * (MODELS - 1))) ] || fail "others were lost, see $demo/slurm.log"
grep -q '^run_03_h,level_max,done,.*,2,$' outputs/summary.csv || fail "run_03 was not tried again"
grep -q '^run_04_h,level_max,failed,.*,1,"\?ERROR' outputs/summary.csv || fail "run_04 was converted twice"
echo "exit status $status; $(grep -c ',done,' outputs/summary.csv) of $((3 * MODELS)) done"
