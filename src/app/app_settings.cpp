// SPDX-License-Identifier: MIT
#include "app/app_settings.h"
