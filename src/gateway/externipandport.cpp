#include "gateway/externipandport.h"
