// Register addresses of the simulated camera, as its description lays them out (all little-endian).
#ifndef SIMCAMERA_SIMULATEDCAMERAREGISTERS_H
#define SIMCAMERA_SIMULATEDCAMERAREGISTERS_H

#include <cstdint>

namespace SimCamera {
namespace Registers {

constexpr int64_t DeviceVendorName = 0x0000;
constexpr int64_t DeviceModelName = 0x0020;
constexpr int64_t DeviceSerialNumber = 0x0040;
constexpr int64_t DeviceUserID = 0x0050;
constexpr int64_t DeviceVersion = 0x0060;
constexpr int64_t DeviceSFNCVersionMajor = 0x0070;
constexpr int64_t DeviceSFNCVersionMinor = 0x0074;
constexpr int64_t DeviceSFNCVersionSubMinor = 0x0078;
constexpr int64_t DeviceTemperatureRaw = 0x0080;  // two sensors, 4 bytes apart, in tenths of a degree
constexpr int64_t DeviceReset = 0x0090;
constexpr int64_t TimestampLatch = 0x0094;
constexpr int64_t TimestampLatchValue = 0x0098;
constexpr int64_t DeviceTemperatureSelector = 0x00A0;
constexpr int64_t SensorWidth = 0x0100;
constexpr int64_t SensorHeight = 0x0104;
constexpr int64_t Width = 0x0108;
constexpr int64_t Height = 0x010C;
constexpr int64_t OffsetX = 0x0110;
constexpr int64_t OffsetY = 0x0114;
constexpr int64_t PixelFormat = 0x0118;
constexpr int64_t ImageFlags = 0x011C;  // bit 0 ReverseX, bit 1 ReverseY
constexpr int64_t BinningHorizontal = 0x0120;
constexpr int64_t TestPattern = 0x0124;
constexpr int64_t AcquisitionMode = 0x0200;
constexpr int64_t AcquisitionStart = 0x0204;
constexpr int64_t AcquisitionStop = 0x0208;
constexpr int64_t AcquisitionFrameCount = 0x020C;
constexpr int64_t ExposureTime = 0x0210;          // double
constexpr int64_t AcquisitionFrameRate = 0x0218;  // double
constexpr int64_t TriggerSelector = 0x0220;
constexpr int64_t TriggerMode = 0x0224;    // two triggers, 4 bytes apart
constexpr int64_t TriggerSource = 0x022C;  // two triggers, 4 bytes apart
constexpr int64_t TriggerSoftware = 0x0234;
constexpr int64_t GainSelector = 0x0300;
constexpr int64_t GainRaw = 0x0304;     // four channels, 4 bytes apart
constexpr int64_t BlackLevel = 0x0318;  // double
constexpr int64_t TestReadOnlyInteger = 0x0400;
constexpr int64_t TestWriteOnlyInteger = 0x0404;
constexpr int64_t TestHexInteger = 0x0408;
constexpr int64_t GevCurrentIPAddress = 0x040C;
constexpr int64_t GevPersistentIPAddress = 0x0410;
constexpr int64_t GevMACAddress = 0x0418;  // 8 bytes
constexpr int64_t TestRegister = 0x0420;   // 8 bytes
constexpr int64_t TestWriteOnlyBoolean = 0x0428;
constexpr int64_t TestIntegerStep10 = 0x042C;
constexpr int64_t TestFloatHugeRange = 0x0430;  // double
constexpr int64_t TestWriteAroundInteger = 0x0440;
constexpr int64_t FileSelector = 0x0500;
constexpr int64_t FileOperationSelector = 0x0504;
constexpr int64_t FileOpenMode = 0x0508;
constexpr int64_t FileAccessOffset = 0x050C;
constexpr int64_t FileAccessLength = 0x0510;
constexpr int64_t FileOperationExecute = 0x0514;
constexpr int64_t FileOperationStatus = 0x0518;
constexpr int64_t FileOperationResult = 0x051C;
constexpr int64_t FileSize = 0x0520;          // four files, 4 bytes apart
constexpr int64_t FileAccessBuffer = 0x0600;  // 256 bytes
constexpr int64_t FileAccessBufferLength = 256;
constexpr int64_t ChunkModeActive = 0x0800;
constexpr int64_t ChunkSelector = 0x0804;
constexpr int64_t ChunkEnable = 0x0810;  // one per chunk, 4 bytes apart
constexpr int64_t EventSelector = 0x0840;
constexpr int64_t EventNotification = 0x0844;  // one per event, 4 bytes apart
constexpr int64_t TestDisconnectAfterFrames = 0x0850;
constexpr int64_t Size = 0x1000;

}  // namespace Registers
}  // namespace SimCamera

#endif
