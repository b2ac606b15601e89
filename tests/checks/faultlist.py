"""How a check of the sources ends."""


def report(faults):
    """Prints each fault, a line of text; the exit code, 1 if there was one."""
    found = list(faults)
    for fault in found:
        print(fault)
    return 1 if found else 0
