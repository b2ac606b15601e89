#include "gateway/gatewaydialogue.h"
