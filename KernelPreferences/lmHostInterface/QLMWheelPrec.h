#pragma once

#include "lmHostApi.h"

#include <QDoubleSpinBox>

// Host precision wheel: a float value edited by wheel, arrows or typing,
// with a chosen number of decimals shown and entered.
class LM_HOST_API QLMWheelPrec : public QDoubleSpinBox
{
    Q_OBJECT

public:
    explicit QLMWheelPrec(QWidget *parent = nullptr);
    ~QLMWheelPrec() override;
};
