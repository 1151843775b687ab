"""Runs one plugin for the program that started this process.

The two speak JSON, an object a line: orders come by the standard input, what the plugin tells goes
by the standard output. Both are moved out of the plugin's way before it is loaded, so that nothing
that it prints or reads can break in; what it prints goes by the standard error output.
"""

import importlib.util
import json
import os
import shutil
import signal
import sys
import threading
import time
import traceback

sys.path[0] = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))

import qrb  # noqa: E402
from runner.report import Channel, Report  # noqa: E402


_LEAVE_SECONDS = 5
_FOLDER = os.path.dirname(sys.path[0])


class Cancelled(BaseException):
    """Raised in the plugin when it is to stop: no ``except Exception`` holds it up."""


def take_pipes():
    """Returns the streams of orders and of answers; from now on no other code finds them."""
    orders = os.fdopen(os.dup(0), "r", encoding="utf-8")
    answers = os.fdopen(os.dup(1), "wb")
    nothing = os.open(os.devnull, os.O_RDONLY)
    os.dup2(nothing, 0)
    os.close(nothing)
    os.dup2(2, 1)
    return orders, answers


class Wish:
    """The wish to stop: raises Cancelled in the main thread, or only waits to be asked for."""

    def __init__(self):
        self.is_told = False
        self.raises = True
        self._is_alone = False
        signal.signal(signal.SIGINT, self._hear)

    def _hear(self, number, frame):
        self.is_told = True
        if self.raises:
            self.raises = False
            raise Cancelled()

    def listen(self, orders):
        """Hears it from the program, or from its end."""

        def tell():
            if hasattr(signal, "pthread_kill"):
                signal.pthread_kill(threading.main_thread().ident, signal.SIGINT)
            else:
                signal.raise_signal(signal.SIGINT)

        def wait():
            for line in orders:
                if json.loads(line).get("type") == "cancel":
                    tell()
            # The program has gone: nobody else ends a plugin that does not listen.
            self._is_alone = True
            tell()
            time.sleep(_LEAVE_SECONDS)
            self.leave(1)

        threading.Thread(target=wait, daemon=True).start()

    def leave(self, code):
        """Ends the process at once: threads that the plugin has started hold nothing up."""
        if self._is_alone:
            shutil.rmtree(_FOLDER, ignore_errors=True)
        os._exit(code)


def refuse(*_, **__):
    raise qrb.Error(
        qrb.ErrorCode.STATE,
        "A plugin can't begin, end or restore transactions.",
        'One that has "writes" in its manifest runs within one, which is committed behind it.',
    )


def load(script):
    """The function ``run`` of a script."""
    sys.path.insert(1, os.path.dirname(script))
    spec = importlib.util.spec_from_file_location("plugin", script)
    module = importlib.util.module_from_spec(spec)
    sys.modules["plugin"] = module
    spec.loader.exec_module(module)
    if not callable(getattr(module, "run", None)):
        raise TypeError("The script has no function run(db, parameters, report).")
    return module.run


def work(order, report, wish):
    """Runs the plugin; returns the number of the transaction that it made, 0 for none."""
    run = load(order["script"])
    parameters = order["parameters"]
    with qrb.open(order["database"], library=order["library"]) as db:
        begin, db.transaction, db.vacuum = db.transaction, refuse, refuse
        db.transactions.restore = db.transactions.discard = db.transactions.finalize = refuse
        if not order["writes"]:
            run(db, parameters, report)
            return 0

        def commits(fraction):
            report.progress(fraction, "Committing")
            return not wish.is_told

        settings = {
            "plugin": order["name"],
            "version": order["version"],
            "parameters": parameters,
        }
        transaction = begin(
            title=order["title"], agent=order["agent"], settings=json.dumps(settings)
        )
        commit, rollback = transaction.commit, transaction.rollback
        transaction.commit = transaction.rollback = refuse
        report.transaction = transaction
        try:
            run(db, parameters, report)
            # An exception would leave open whether the commit had happened.
            wish.raises = False
            commit(progress=commits)
        finally:
            if transaction.is_pending:
                rollback()
        return transaction.id


def failure(error, folder):
    """What to tell of an exception: a line, and where in the plugin's own files it happened."""
    text = str(error).strip() or type(error).__name__
    if str(error) and not isinstance(error, qrb.Error):
        text = f"{type(error).__name__}: {text}"
    first, _, rest = text.partition("\n")
    details, more = [rest], getattr(error, "details", "") or ""
    if more not in rest:  # the text of a qrb.Error ends with them
        details.append(more)
    # Those of the database tell what to do; of others the place is needed.
    frames = [] if isinstance(error, qrb.Error) else traceback.extract_tb(error.__traceback__)
    for frame in frames:
        if frame.filename.startswith(folder):
            name = os.path.relpath(frame.filename, folder)
            details.append(f"{name}, line {frame.lineno}, in {frame.name}: {frame.line}")
    return {"text": first, "details": "\n".join(part for part in details if part)}


def main():
    orders, answers = take_pipes()
    channel = Channel(answers)
    order = json.loads(orders.readline())
    wish = Wish()
    try:
        wish.listen(orders)
        channel.send(type="done", transaction=work(order, Report(channel), wish))
    except Cancelled:
        channel.send(type="cancelled")
    except SystemExit as error:
        channel.send(type="failed", text=f"The plugin ended its process: {error}", details="")
    except BaseException as error:  # a plugin may raise anything; the program has to hear of it
        if wish.is_told:
            channel.send(type="cancelled")
        else:
            channel.send(type="failed", **failure(error, os.path.dirname(order["script"])))
    sys.stdout.flush()
    sys.stderr.flush()
    wish.leave(0)


if __name__ == "__main__":  # and not where a plugin's processes load it
    main()
