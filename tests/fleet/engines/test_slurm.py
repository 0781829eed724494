"""The recipe for Slurm as it stands in the page, on a cluster of this one computer, with daemons that
are there for this test alone: in one go, with a task that is put back, and with a job that is ended."""

import os
import shutil
import socket
import subprocess
import time
import unittest

from . import given

HEADING = "Images with Slurm"

CONFIGURATION = """\
ClusterName=test
SlurmctldHost={host}(127.0.0.1)
SlurmctldPort={ports[0]}
SlurmdPort={ports[1]}
SlurmUser=root
AuthType=auth/munge
# A task that is put back starts again after this time.
AuthInfo=socket={folder}/munge/socket,cred_expire=5
StateSaveLocation={folder}/state
SlurmdSpoolDir={folder}/spool
SlurmctldPidFile={folder}/slurmctld.pid
SlurmdPidFile={folder}/slurmd.pid
SlurmctldLogFile={folder}/slurmctld.log
SlurmdLogFile={folder}/slurmd.log
ProctrackType=proctrack/linuxproc
TaskPlugin=task/none
SelectType=select/cons_tres
SelectTypeParameters=CR_Core
ReturnToService=2
# So that the node may have other cores and memory than this computer.
SlurmdParameters=config_overrides
MpiDefault=none
SchedulerParameters=sched_interval=1,bf_interval=1,batch_sched_delay=0
NodeName={host} NodeAddr=127.0.0.1 CPUs={cores} RealMemory={memory} State=UNKNOWN
PartitionName=all Nodes=ALL Default=YES State=UP
"""


def _free_ports(count):
    sockets = [socket.create_server(("127.0.0.1", 0)) for _ in range(count)]
    ports = [one.getsockname()[1] for one in sockets]
    for one in sockets:
        one.close()
    return ports


class Cluster:
    """One node, of this computer. Nothing of it is outside its folder, nor there when it is closed."""

    def __init__(self, folder, cores=2, memory=4096):
        self.folder = folder
        host = socket.gethostname().split(".")[0]
        # Its own mark, since it outlives each of the tests.
        self.environment = os.environ | {"SLURM_CONF": str(folder / "slurm.conf"), given.MARK: str(folder)}
        folder.mkdir(mode=0o755)
        (folder / "munge").mkdir(mode=0o711)
        for name in ("state", "spool"):
            (folder / name).mkdir()
        key = folder / "munge/key"
        key.write_bytes(os.urandom(1024))
        key.chmod(0o400)
        (folder / "slurm.conf").write_text(
            CONFIGURATION.format(host=host, folder=folder, cores=cores, memory=memory,
                                 ports=_free_ports(2)), "ascii")
        (folder / "cgroup.conf").write_text("CgroupPlugin=cgroup/v1\n", "ascii")
        self.run("munged", "--force", *(f"--{name}-file={folder}/munge/{name}" for name in ("key", "pid", "log", "seed")),
                 f"--socket={folder}/munge/socket")
        self.run("slurmctld")
        self.run("slurmd", "-N", host)
        given.wait_until("the node is idle", lambda: "idle" in self.run("sinfo", "-h", "-o", "%t"))

    def run(self, *words):
        done = subprocess.run(words, env=self.environment, capture_output=True, text=True)
        if done.returncode:
            raise AssertionError(f"{words}: {done.stderr}")
        return done.stdout

    def jobs(self, name=None):
        """Those that have not ended: number and state."""
        named = ["--name", name] if name else []
        return self.run("squeue", "-h", "-r", "-o", "%i %T", *named).splitlines()

    def close(self):
        subprocess.run(["scontrol", "shutdown"], env=self.environment, capture_output=True)
        subprocess.run(["munged", f"--socket={self.folder}/munge/socket",
                        f"--pid-file={self.folder}/munge/pid", "--stop"],
                       env=self.environment, capture_output=True)
        # The daemons need a moment for it, and may not all have come up.
        deadline = time.monotonic() + 5
        while given.marked(self.folder) and time.monotonic() < deadline:
            time.sleep(0.1)
        given.end_marked(self.folder)


def _refusal():
    missing = [name for name in ("sbatch", "slurmctld", "slurmd", "munged") if not shutil.which(name)]
    if missing:
        return f"not here: {', '.join(missing)}"
    return "Slurm's daemons need root" if os.geteuid() else None


class SlurmTest(given.FleetTest):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        if _refusal():
            raise unittest.SkipTest(_refusal())
        cls.cluster = Cluster(given.work / "cluster")
        cls.addClassCleanup(cls.cluster.close)

    def submit(self, environment):
        """Gives the number of the array."""
        variables = environment | self.cluster.environment | {"PATH": environment["PATH"], "TASKS": "4"}
        done = subprocess.run(["bash", "-ec", self.recipe(HEADING)], env=variables, capture_output=True,
                              text=True)
        self.assertEqual(done.returncode, 0, done.stderr)
        words = done.stdout.split()
        return words[words.index("array") + 1]

    def wait_for_all(self):
        given.wait_until("all jobs end", lambda: not self.cluster.jobs())

    def wait_for_all_but(self, array, task):
        """The program of this task does not begin before the gate is open."""
        given.wait_until("one task is left", lambda: self.cluster.jobs("zelvreg-scan") == [f"{array}_{task} RUNNING"])

    def test_a_task_that_is_put_back_goes_on(self):
        array = self.submit(self.gated("$SLURM_ARRAY_TASK_ID == 1"))
        self.wait_for_all_but(array, 1)
        self.assert_whole()
        self.assertLess(self.count(), len(given.images()))
        self.gate.touch()
        self.cluster.run("scontrol", "requeue", f"{array}_1")
        self.wait_for_all()
        self.assert_same_as_once()
        self.assert_report()

    def test_a_job_that_was_ended_is_submitted_again(self):
        environment = self.gated("$SLURM_ARRAY_TASK_ID == 1")
        array = self.submit(environment)
        self.wait_for_all_but(array, 1)
        self.cluster.run("scancel", array)
        # The merge comes all the same, and says what is missing.
        self.wait_for_all()
        log = (self.folder / "fleet.log").read_text("utf-8")
        missing = len(given.images()) - self.count()
        self.assertGreater(missing, 0)
        self.assertEqual(log.count("no result: "), missing, log)
        made = {file.name: file.stat().st_mtime_ns for file in self.results.glob("*.json")}
        self.gate.touch()
        self.submit(environment)
        self.wait_for_all()
        self.assert_same_as_once()
        for name, time_made in made.items():
            self.assertEqual((self.results / name).stat().st_mtime_ns, time_made, name)
