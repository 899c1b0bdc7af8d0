#include "QLMColorManipulator.h"

#include <QColorDialog>
#include <QHBoxLayout>
#include <QPixmap>
#include <QToolButton>

QLMColorManipulator::QLMColorManipulator(QWidget *parent) : QWidget(parent), m_swatch(new QToolButton(this))
{
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_swatch);
    layout->addStretch(1);
    m_swatch->setObjectName(QStringLiteral("_swatch"));
    m_swatch->setToolButtonStyle(Qt::ToolButtonIconOnly);
    m_swatch->setIconSize(QSize(40, 14));
    m_swatch->setToolTip(tr("Click to choose a colour"));
    setFocusProxy(m_swatch);
    connect(m_swatch, &QToolButton::clicked, this, &QLMColorManipulator::chooseColor);
    updateSwatch();
}

QLMColorManipulator::~QLMColorManipulator() = default;

void QLMColorManipulator::getColor(float &r, float &g, float &b) const
{
    r = m_rgb[0];
    g = m_rgb[1];
    b = m_rgb[2];
}

void QLMColorManipulator::setColor(float r, float g, float b)
{
    m_rgb[0] = r;
    m_rgb[1] = g;
    m_rgb[2] = b;
    updateSwatch();
}

QColor QLMColorManipulator::color() const
{
    // QColor rejects components outside 0..1.
    auto bounded = [](float value) { return qBound(0.0, double(value), 1.0); };
    return QColor::fromRgbF(bounded(m_rgb[0]), bounded(m_rgb[1]), bounded(m_rgb[2]));
}

QSize QLMColorManipulator::sizeHint() const
{
    return m_swatch->sizeHint();
}

void QLMColorManipulator::chooseColor()
{
    const QColor chosen = QColorDialog::getColor(color(), this, tr("Select Color"));
    if (!chosen.isValid()) // cancelled
        return;
    // The dialog works in 8 bits per channel: confirming the colour shown
    // keeps the exact floats.
    if (chosen.rgb() == color().rgb())
        return;
    const float r = float(chosen.redF()), g = float(chosen.greenF()), b = float(chosen.blueF());
    setColor(r, g, b);
    emit colorChanged(r, g, b);
}

void QLMColorManipulator::updateSwatch()
{
    QPixmap pixmap(m_swatch->iconSize());
    pixmap.fill(color());
    m_swatch->setIcon(QIcon(pixmap));
}
