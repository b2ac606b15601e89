#include "gateway/gatewayrates.h"
