#pragma once

#include <QProcess>
#include <csignal>
#include <sys/prctl.h>

/// A program that ends with this one, even if that gives up in the middle.
class ChildProcess : public QProcess
{
protected:
    void setupChildProcess() override { ::prctl(PR_SET_PDEATHSIG, SIGTERM); }
};
