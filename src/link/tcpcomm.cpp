#include "link/tcpcomm.h"
