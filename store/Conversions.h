// Between what is on screen and what is in the store.
#pragma once

#include "store/Amounts.h"
#include "store/Dates.h"
