#pragma once

// The plug-in is built with hidden visibility; host symbols must stay visible
// in its declarations so that references resolve against the host library.
#define LM_HOST_API __attribute__((visibility("default")))
