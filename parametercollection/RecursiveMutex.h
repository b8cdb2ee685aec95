// The recursive mutex behind the library's locks: a QMutex in recursive mode under Qt 5, Qt 6's
// QRecursiveMutex (which no longer is a QMutex) under Qt 6.
#ifndef PARAMETERCOLLECTION_RECURSIVEMUTEX_H
#define PARAMETERCOLLECTION_RECURSIVEMUTEX_H

#include <QtGlobal>
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
#include <QRecursiveMutex>
#else
#include <QMutex>
#endif

namespace ParameterCollection {

#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
class CRecursiveMutex : public QRecursiveMutex {};
#else
class CRecursiveMutex : public QMutex {
public:
    CRecursiveMutex() : QMutex(QMutex::Recursive) {}
};
#endif

}  // namespace ParameterCollection

#endif
