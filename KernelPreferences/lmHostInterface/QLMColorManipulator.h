#pragma once

#include "lmHostApi.h"

#include <QColor>
#include <QWidget>

class QToolButton;

// Host colour picker: a swatch showing an RGB colour of floats in 0..1;
// clicking it opens a colour dialog. The floats are kept as given, so a
// colour read back is exactly the colour that was set.
class LM_HOST_API QLMColorManipulator : public QWidget
{
    Q_OBJECT

public:
    explicit QLMColorManipulator(QWidget *parent = nullptr);
    ~QLMColorManipulator() override;

    void getColor(float &r, float &g, float &b) const;
    // Programmatic changes emit no signal.
    void setColor(float r, float g, float b);

    QColor color() const;

    QSize sizeHint() const override;

public Q_SLOTS:
    // Lets the user choose a colour in a dialog.
    void chooseColor();

Q_SIGNALS:
    // The user chose another colour.
    void colorChanged(float r, float g, float b);

private:
    void updateSwatch();

    QToolButton *m_swatch;
    float m_rgb[3] = {0.0f, 0.0f, 0.0f};
};
