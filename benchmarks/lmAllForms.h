#pragma once

#include <QWidget>

#include <vector>

// Builds every generated form of the plug-in, each on a fresh widget.
void lmBuildAllForms(std::vector<QWidget *> &widgets);
