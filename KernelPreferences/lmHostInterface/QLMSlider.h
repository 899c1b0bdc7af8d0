#pragma once

#include "lmHostApi.h"

#include <QWidget>

class QSlider;
class QDoubleSpinBox;

// Host slider over a float range: a slider beside a spin box showing the value.
class LM_HOST_API QLMSlider : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(double value READ value WRITE setValue NOTIFY valueChanged USER true)
    Q_PROPERTY(double minimum READ minimum WRITE setMinimum)
    Q_PROPERTY(double maximum READ maximum WRITE setMaximum)
    Q_PROPERTY(int decimals READ decimals WRITE setDecimals)

public:
    explicit QLMSlider(QWidget *parent = nullptr);
    ~QLMSlider() override;

    void setRange(double minimum, double maximum);
    void setMinimum(double minimum);
    void setMaximum(double maximum);
    double minimum() const { return m_minimum; }
    double maximum() const { return m_maximum; }

    // Small step: arrow keys and the spin box; large step: page keys.
    void setSteps(double smallStep, double largeStep);
    double smallStep() const { return m_smallStep; }
    double largeStep() const { return m_largeStep; }

    void setDecimals(int decimals);
    int decimals() const;

    double value() const { return m_value; }

public Q_SLOTS:
    void setValue(double value);

Q_SIGNALS:
    void valueChanged(double value);

private:
    void syncSlider();
    int toSlider(double value) const;

    QSlider *m_slider;
    QDoubleSpinBox *m_spin;
    double m_minimum = 0.0;
    double m_maximum = 1.0;
    double m_smallStep = 0.01;
    double m_largeStep = 0.1;
    double m_value = 0.0;
    bool m_syncing = false;
};
