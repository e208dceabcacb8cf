#pragma once

// One Qt Test executable per source folder runs several test classes. Each
// test file registers its class with TREKMIME_TEST(Class); the folder's
// executable links TestMain.cpp, which runs them all (command-line arguments
// such as -v2 or a function name apply to each class; `-class NAME` picks
// one class, as CTest does for each; `-check-classes A,B` answers whether
// exactly those classes are registered). It brings Qt Test along, which
// every test file uses, and the u"text"_s literals the tests write texts with.

#include <QList>
#include <QObject>
#include <QTest>

#include <functional>

using namespace Qt::StringLiterals;

namespace TestRegistry {
struct Entry
{
    const char *name;
    std::function<QObject *()> make;
};
QList<Entry> &entries();
struct Registration
{
    Registration(const char *name, std::function<QObject *()> make)
    {
        entries().append({name, std::move(make)});
    }
};
} // namespace TestRegistry

// One row of a data table: each value in its column's type, a "text" going
// into a QString column. Shorter than QTest::newRow() << ..., which the
// formatter breaks after every text.
template <typename... Values> void addRow(const char *name, const Values &...values)
{
    (QTest::newRow(name) << ... << values);
}

#define TREKMIME_TEST(Class)                                                                       \
    static const TestRegistry::Registration trekmimeTestRegistration##Class(                       \
        #Class, [] { return static_cast<QObject *>(new Class); });
