#include "gateway/changegatewaydialog.h"
