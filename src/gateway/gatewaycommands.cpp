#include "gateway/gatewaycommands.h"
