// Versions of the Standard Features Naming Convention a device may implement.
#ifndef PARAMETERCOLLECTION_SFNCVERSION_H
#define PARAMETERCOLLECTION_SFNCVERSION_H

#include "ParameterCollectionExport.h"
#include <QVersionNumber>

namespace ParameterCollection {

PARAMETERCOLLECTION_EXPORT extern const QVersionNumber Sfnc_VersionUndefined;
PARAMETERCOLLECTION_EXPORT extern const QVersionNumber Sfnc_1_2_1;
PARAMETERCOLLECTION_EXPORT extern const QVersionNumber Sfnc_1_3_0;
PARAMETERCOLLECTION_EXPORT extern const QVersionNumber Sfnc_1_4_0;
PARAMETERCOLLECTION_EXPORT extern const QVersionNumber Sfnc_1_5_0;
PARAMETERCOLLECTION_EXPORT extern const QVersionNumber Sfnc_1_5_1;
PARAMETERCOLLECTION_EXPORT extern const QVersionNumber Sfnc_2_0_0;
PARAMETERCOLLECTION_EXPORT extern const QVersionNumber Sfnc_2_1_0;
PARAMETERCOLLECTION_EXPORT extern const QVersionNumber Sfnc_2_2_0;
PARAMETERCOLLECTION_EXPORT extern const QVersionNumber Sfnc_2_5_0;

}  // namespace ParameterCollection

#endif
