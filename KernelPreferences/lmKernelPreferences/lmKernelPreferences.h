#pragma once

// The plug-in's only exported symbol: creates every preferences category.
extern "C" __attribute__((visibility("default"))) void initPreferencesPlugin();
