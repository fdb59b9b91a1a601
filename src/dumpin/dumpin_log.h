// Every dump-in and reprocess source logs under one tag.
#pragma once

#define LOG_TAG "qelcam-aaa-util"
#include "camtune/platform/log.h"
