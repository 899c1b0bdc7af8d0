#pragma once

#include <QWidget>

#include <vector>

// A generated form of the plug-in: its name (the object name its widget gets)
// and how to build it bare on a fresh widget.
struct lmForm
{
    const char *name;
    QWidget *(*build)();
};

const std::vector<lmForm> &lmAllForms();
