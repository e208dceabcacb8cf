#pragma once

#include <QStringList>

// The hide list of a sibling application: a dictionary whose keys are bundle
// identifiers to leave out of the application list. Only ever read.
class HideList
{
public:
    static QStringList bundleIdentifiers();
};
