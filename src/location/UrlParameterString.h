#pragma once

#include <QByteArray>
#include <QString>

// A text percent-encoded for use as a query value: UTF-8 bytes of every
// character not allowed in a URL become %XX, and so do the characters
// ":/=,!$&'()*+;[]@#?|", which would otherwise cut the value short or be
// read as structure. The bar is among them because bounding boxes use it.
QByteArray encodedURLParameterString(const QString &value);
