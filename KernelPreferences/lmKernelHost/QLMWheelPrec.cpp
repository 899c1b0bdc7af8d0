#include "QLMWheelPrec.h"

QLMWheelPrec::QLMWheelPrec(QWidget *parent) : QDoubleSpinBox(parent)
{
    // Wide open until the page sets its own range.
    setDecimals(3);
    setRange(-1.0e7, 1.0e7);
    setKeyboardTracking(false);
    setAccelerated(true);
}

QLMWheelPrec::~QLMWheelPrec() = default;
