#pragma once

#include "ui/GestureRecognizer.h"

// A press and release without wandering: recognised (ended) on release.
class TapGestureRecognizer : public GestureRecognizer
{
    Q_OBJECT

public:
    using GestureRecognizer::GestureRecognizer;

protected:
    void pressed(QPointF position) override;
    void moved(QPointF position) override;
    void released(QPointF position) override;

private:
    QPointF m_start;
};
