#pragma once

#include <QString>

// What a platform hands out for an installed application in some of its
// listings; only the identifier is used.
struct ApplicationProxy
{
    QString applicationIdentifier;
};
