#!/bin/sh
# Imports an archive on two workers that GNU parallel reaches over ssh, and holds the outputs and the merged report
# against those of one machine. Both workers are this machine; the ssh server is the test's own.
# usage: several_machines_test.sh PETAL FOLDER-OF-MODELS
set -eu
PATH="$PATH:/usr/sbin"
petal=$1
models=$2

skip() {
    echo "skipped: $1"
    exit 77 # which ctest knows as such
}
for program in parallel ssh sshd ssh-keygen; do
    command -v $program >/dev/null || skip "$program is not installed"
done
if [ "$(id -u)" = 0 ] && [ ! -d /run/sshd ]; then # where sshd gives up its rights
    mkdir -p /run/sshd || skip "sshd has no folder /run/sshd"
fi

folder=$(mktemp -d)
server=""
clean() {
    [ -n "$server" ] && kill "$server" 2>/dev/null
    rm -rf "$folder"
}
trap clean EXIT
trap 'exit 1' INT TERM
cd "$folder"

# A server of our own, with keys of its own, on the first port that is free.
ssh-keygen -q -t ed25519 -N '' -f host
ssh-keygen -q -t ed25519 -N '' -f client
cat >sshd_config <<END
ListenAddress 127.0.0.1
HostKey $folder/host
AuthorizedKeysFile $folder/client.pub
StrictModes no
UsePAM no
PidFile none
PermitRootLogin prohibit-password
END
cat >ssh_config <<END
Host worker1 worker2
    HostName 127.0.0.1
    IdentityFile $folder/client
    IdentitiesOnly yes
    StrictHostKeyChecking no
    UserKnownHostsFile /dev/null
    LogLevel ERROR
END
for port in $(seq 20022 20052); do
    "$(command -v sshd)" -D -e -f sshd_config -p "$port" 2>sshd.log &
    server=$!
    for attempt in $(seq 100); do
        grep -q 'Server listening' sshd.log && break 2
        kill -0 $server 2>/dev/null || break
        sleep 0.05
    done
    kill $server 2>/dev/null || true
    server=""
done
[ -n "$server" ] || skip "no ssh server can be started: $(tail -n 1 sshd.log)"
echo "    Port $port" >>ssh_config
ssh -F ssh_config worker1 true || skip "the ssh server lets nobody in: $(tail -n 1 sshd.log)"

# The archive: good models, and one that is none.
for number in $(seq 11); do
    mkdir -p archive/$((number % 3))
    cp "$models/bookshop.mdl" archive/$((number % 3))/model$number.mdl
done
echo "no model" >archive/1/broken.mdl

find archive -iname '*.mdl' | LC_ALL=C sort >list
PARALLEL_SSH="ssh -F $folder/ssh_config" PARALLEL_HOME="$folder" parallel --will-cite --pipe -N 3 -k \
    -S 1/worker1,1/worker2 --workdir "$folder" \
    "$petal import --files-from - -o out -q --report part-{0#}.json" <list || [ $? = 1 ] # one part has a failure
"$petal" report merge part-*.json -o merged.json
mv out out-of-workers
"$petal" import archive -o out -q --report whole.json || [ $? = 5 ]
diff -r out out-of-workers
diff whole.json merged.json
[ "$(find out -name '*.json' | wc -l)" = 11 ]
echo "the same outputs and the same report: $(ls part-*.json | wc -l) parts on two workers"
