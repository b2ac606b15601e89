#include "gateway/gatewayzrt.h"
