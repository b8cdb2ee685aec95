// The names under which the collection knows the node maps of a camera.
#ifndef PARAMETERCOLLECTION_PARAMETERPATH_H
#define PARAMETERCOLLECTION_PARAMETERPATH_H

#include "ParameterCollectionExport.h"
#include <QString>

namespace ParameterCollection {
namespace ParameterPath {

PARAMETERCOLLECTION_EXPORT extern const QString CameraInstance;
PARAMETERCOLLECTION_EXPORT extern const QString CameraDevice;
PARAMETERCOLLECTION_EXPORT extern const QString StreamGrabber0;
PARAMETERCOLLECTION_EXPORT extern const QString DeviceTransportLayer;
PARAMETERCOLLECTION_EXPORT extern const QString ChunkData;
PARAMETERCOLLECTION_EXPORT extern const QString EventGrabber;
PARAMETERCOLLECTION_EXPORT extern const QString PixelDataConverter;
PARAMETERCOLLECTION_EXPORT extern const QString VideoWriter;
PARAMETERCOLLECTION_EXPORT extern const QString Interface;

}  // namespace ParameterPath
}  // namespace ParameterCollection

#endif
