// The SFNC version constants, initialised when the library is loaded.
#include "SfncVersion.h"

namespace ParameterCollection {

const QVersionNumber Sfnc_VersionUndefined(0, 0, 0);
const QVersionNumber Sfnc_1_2_1(1, 2, 1);
const QVersionNumber Sfnc_1_3_0(1, 3, 0);
const QVersionNumber Sfnc_1_4_0(1, 4, 0);
const QVersionNumber Sfnc_1_5_0(1, 5, 0);
const QVersionNumber Sfnc_1_5_1(1, 5, 1);
const QVersionNumber Sfnc_2_0_0(2, 0, 0);
const QVersionNumber Sfnc_2_1_0(2, 1, 0);
const QVersionNumber Sfnc_2_2_0(2, 2, 0);
const QVersionNumber Sfnc_2_5_0(2, 5, 0);

}  // namespace ParameterCollection
