"""How busy other programs keep the machine while something is measured."""
import os
import resource
import time

# Up to this many cores' worth of other work, figures are those of an idle machine.
IDLE = 0.5


def _busy_seconds():
    """Processor time that the whole machine has used since it started."""
    with open("/proc/stat", encoding="ascii") as stat:
        user, nice, system, _, _, irq, softirq, steal = map(int, stat.readline().split()[1:9])
    return (user + nice + system + irq + softirq + steal) / os.sysconf("SC_CLK_TCK")


def _own_seconds():
    used = (resource.getrusage(who) for who in (resource.RUSAGE_SELF, resource.RUSAGE_CHILDREN))
    return sum(usage.ru_utime + usage.ru_stime for usage in used)


class OtherLoad:
    """The cores that others keep busy, from the making of the object to value().

    What children of this process use counts as its own once they have ended. The system's load
    average would count them as well and tell nothing about others.
    """

    def __init__(self):
        self._begun = time.monotonic(), _busy_seconds(), _own_seconds()

    def value(self):
        begun, busy, own = self._begun
        elapsed = max(time.monotonic() - begun, 0.01)
        return max(0.0, (_busy_seconds() - busy) - (_own_seconds() - own)) / elapsed
