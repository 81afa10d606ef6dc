# SPDX-License-Identifier: MIT
"""Sweeps on a real scheduler with two worker processes, on the loopback."""

import collections
import os
import pathlib
import pickle
import signal
import subprocess
import sys
import time

import numpy as np
import pytest

import zirk

distributed = pytest.importorskip("distributed", reason="no distributed (Debian: python3-distributed)")
LONG = np.longdouble
SPRING = "k = 1;  x'' = -k*x & 1;"


@pytest.fixture
def cluster(tmp_path):
    """A client, and the processes of the workers."""
    file = tmp_path / "scheduler.json"
    log = open(tmp_path / "log", "w")

    def start(module, *options):
        arguments = [sys.executable, "-m", f"distributed.cli.{module}", "--scheduler-file", str(file), "--no-dashboard", *options]
        return subprocess.Popen(arguments, stdout=log, stderr=log, cwd=tmp_path)

    processes = [start("dask_scheduler", "--host", "127.0.0.1", "--port", "0")]
    try:
        workers = [
            start("dask_worker", "--host", "127.0.0.1", "--nthreads", "1", "--no-nanny", "--local-directory", str(tmp_path))
            for _ in range(2)
        ]
        processes += workers
        for _ in range(600):
            if file.exists():
                break
            time.sleep(0.1)
        with distributed.Client(scheduler_file=str(file), timeout=60) as client:
            client.wait_for_workers(2, timeout=60)
            yield client, workers
    except Exception:
        print((tmp_path / "log").read_text())
        raise
    finally:
        for process in processes:
            process.kill()
            process.wait()
        log.close()


def test_ten_thousand_sets_on_two_workers_one_of_which_is_killed(cluster, tmp_path):
    client, workers = cluster
    values = np.arange(1, 10001) / 128
    store = tmp_path / "store"
    seen = collections.Counter()

    def watch(result):
        seen[result.index] += 1
        if sum(seen.values()) == 3000:
            workers[0].send_signal(signal.SIGKILL)

    found = zirk.sweep(SPRING, {"k": values}, 20, executor=client, on_result=watch, store=store)
    assert workers[0].wait(10) == -signal.SIGKILL and workers[1].poll() is None
    # Nothing is lost, nothing is there twice: in the calls, in the result, and in the store.
    assert len(seen) == 10000 and set(seen.values()) == {1}
    assert len(found) == 10000 and not found.errors and (found["k"] == values).all()
    there = collections.Counter(r.index for file in pathlib.Path(store).glob("*.results") for r in pickle.loads(file.read_bytes()))
    assert len(there) == 10000 and set(there.values()) == {1}
    assert np.abs(found["x"] - np.cos(np.sqrt(values.astype(LONG)) * 20)).max() < 1e-16
    for i in (0, 4999, 9999):
        assert found["x"][i] == zirk.solve(SPRING, at=[20], set={"k": values[i]}, dense=False)["x"][-1]


def test_workers_are_other_processes_and_failures_come_back(cluster):
    client, workers = cluster
    assert sorted(client.run(os.getpid).values()) == sorted(worker.pid for worker in workers)
    found = zirk.sweep("a = 0; x' = a*x*x & 1;", {"a": [0.25, 1, -1]}, 1.5, executor=client)
    assert [r.parameters for r in found.errors] == [{"a": 1}]
    error = found.errors[0].error
    assert isinstance(error, zirk.RunError) and abs(error.time - 1) < 1e-15 and error.solution.end == error.time
    # A set that stands there twice is solved twice.
    assert zirk.sweep(SPRING, [{"k": 4}, {"k": 4}], "pi", executor=client)["x"].astype(float).tolist() == [1, 1]


class Watching:
    """A client whose executor remembers the errors of tasks."""

    def __init__(self, client):
        self.client, self.errors = client, []

    def ncores(self):
        return self.client.ncores()

    def get_executor(self, **options):
        executor = self.client.get_executor(**options)
        submit = executor.submit

        def watched(*call):
            future = submit(*call)
            future.add_done_callback(lambda done: self.errors.append(done.exception()))
            return future

        executor.submit = watched
        return executor


def test_a_task_that_is_given_up_is_tried_again_set_by_set(cluster):
    client, workers = cluster
    client.run_on_scheduler(lambda dask_scheduler: setattr(dask_scheduler, "allowed_failures", 0))
    watching = Watching(client)
    killed = []

    def kill(result):
        if not killed:
            killed.append(workers[0].send_signal(signal.SIGKILL))

    found = zirk.sweep(SPRING, {"k": range(1, 1001)}, 100, executor=watching, on_result=kill)
    given_up = [error for error in watching.errors if isinstance(error, distributed.scheduler.KilledWorker)]
    assert given_up and len(found) == 1000 and not found.errors


def test_workers_that_cannot_work_are_told_at_once(cluster):
    client, _ = cluster
    client.run(lambda: __import__("sys").modules.update(zirk=None))
    calls = []
    with pytest.raises(ImportError):
        zirk.sweep(SPRING, {"k": range(1, 10001)}, 1, executor=client, on_result=calls.append)
    assert len(calls) < 100
