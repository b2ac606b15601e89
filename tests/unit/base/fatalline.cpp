// Ends with a fatal line while the log is caught.

#include "support/messagecatcher.h"

#include <QtGlobal>

int main()
{
    const MessageCatcher catcher;
    qFatal("this cannot go on");
}
