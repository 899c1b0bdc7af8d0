#include "QLMSlider.h"

#include <QDoubleSpinBox>
#include <QHBoxLayout>
#include <QSignalBlocker>
#include <QSlider>

#include <algorithm>
#include <cmath>

namespace {
// Resolution of the slider track; the spin box carries the exact value.
const int kTrackSteps = 1000;
}

QLMSlider::QLMSlider(QWidget *parent)
    : QWidget(parent), m_slider(new QSlider(Qt::Horizontal, this)), m_spin(new QDoubleSpinBox(this))
{
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_slider, 1);
    layout->addWidget(m_spin);
    m_slider->setRange(0, kTrackSteps);
    m_spin->setDecimals(2);
    m_spin->setKeyboardTracking(false);
    setFocusProxy(m_spin);
    setRange(m_minimum, m_maximum);
    setSteps(m_smallStep, m_largeStep);

    connect(m_slider, &QSlider::valueChanged, this, [this](int position) {
        if (m_syncing)
            return;
        setValue(m_minimum + (m_maximum - m_minimum) * position / kTrackSteps);
    });
    connect(m_spin, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this, [this](double value) {
        if (!m_syncing)
            setValue(value);
    });
}

QLMSlider::~QLMSlider() = default;

void QLMSlider::setRange(double minimum, double maximum)
{
    m_minimum = minimum;
    m_maximum = std::max(minimum, maximum);
    {
        const QSignalBlocker blocker(m_spin);
        m_spin->setRange(m_minimum, m_maximum);
    }
    setValue(m_value);
    syncSlider();
}

void QLMSlider::setMinimum(double minimum)
{
    setRange(minimum, std::max(minimum, m_maximum));
}

void QLMSlider::setMaximum(double maximum)
{
    setRange(std::min(m_minimum, maximum), maximum);
}

void QLMSlider::setSteps(double smallStep, double largeStep)
{
    m_smallStep = smallStep;
    m_largeStep = largeStep;
    m_spin->setSingleStep(smallStep);
    const double span = m_maximum - m_minimum;
    if (span > 0.0) {
        m_slider->setSingleStep(std::max(1, int(std::lround(smallStep / span * kTrackSteps))));
        m_slider->setPageStep(std::max(1, int(std::lround(largeStep / span * kTrackSteps))));
    }
}

void QLMSlider::setDecimals(int decimals)
{
    const QSignalBlocker blocker(m_spin);
    m_spin->setDecimals(decimals);
}

int QLMSlider::decimals() const
{
    return m_spin->decimals();
}

void QLMSlider::setValue(double value)
{
    // Out-of-range values are clamped; NaN falls back to the minimum.
    const double bounded = std::isnan(value) ? m_minimum : std::min(std::max(value, m_minimum), m_maximum);
    const bool changed = bounded != m_value;
    m_value = bounded;
    syncSlider();
    if (changed)
        emit valueChanged(m_value);
}

int QLMSlider::toSlider(double value) const
{
    const double span = m_maximum - m_minimum;
    if (span <= 0.0)
        return 0;
    return int(std::lround((value - m_minimum) / span * kTrackSteps));
}

void QLMSlider::syncSlider()
{
    m_syncing = true;
    m_slider->setValue(toSlider(m_value));
    m_spin->setValue(m_value);
    m_syncing = false;
}
