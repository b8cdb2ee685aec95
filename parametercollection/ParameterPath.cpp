// The node map names, initialised when the library is loaded.
#include "ParameterPath.h"

namespace ParameterCollection {
namespace ParameterPath {

const QString CameraInstance = QStringLiteral("@CameraInstance");
const QString CameraDevice = QStringLiteral("@CameraDevice");
const QString StreamGrabber0 = QStringLiteral("@StreamGrabber0");
const QString DeviceTransportLayer = QStringLiteral("@DeviceTransportLayer");
const QString ChunkData = QStringLiteral("@ChunkData");
const QString EventGrabber = QStringLiteral("@EventGrabber");
const QString PixelDataConverter = QStringLiteral("@PixelDataConverter");
const QString VideoWriter = QStringLiteral("@VideoWriter");
const QString Interface = QStringLiteral("@Interface");

}  // namespace ParameterPath
}  // namespace ParameterCollection
