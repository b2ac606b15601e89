#include "gateway/gatewaystatus.h"
