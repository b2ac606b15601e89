#include "gateway/minmaxdialog.h"
