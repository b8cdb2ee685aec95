// Event adapter for USB3 Vision event messages (GenCP EVENT_CMD, little-endian).
#ifndef GENAPI_EVENTADAPTERU3V_H
#define GENAPI_EVENTADAPTERU3V_H

#include <GenApi/EventAdapter.h>
#include <cstddef>

#if defined(__GNUC__)
#define PACK_STRUCT __attribute__((packed))
#elif defined(_MSC_VER)
#define PACK_STRUCT
#else
#error Unknown platform
#endif

namespace GENAPI_NAMESPACE {

#pragma pack(push, 1)

typedef struct PACK_STRUCT U3V_COMMAND_HEADER {
    uint32_t Prefix;
    uint16_t Flags;
    uint16_t CommandId;
    uint16_t Length;
    uint16_t ReqId;
} U3V_COMMAND_HEADER;

typedef struct PACK_STRUCT U3V_EVENT_DATA {
    uint16_t Reserved;
    uint16_t EventId;
    uint64_t Timestamp;
} U3V_EVENT_DATA;

typedef struct PACK_STRUCT U3V_EVENT_MESSAGE {
    U3V_COMMAND_HEADER CommandHeader;
    U3V_EVENT_DATA EventData;
} U3V_EVENT_MESSAGE;

#pragma pack(pop)

const uint32_t U3V_EVENT_PREFIX = 0x45563355;
const uint16_t GENCP_EVENT_CMD_ID = 0x0C00;
const size_t GENCP_COMMAND_HEADER_SIZE = sizeof(U3V_COMMAND_HEADER);
const size_t GENCP_EVENT_BASIC_SIZE = sizeof(U3V_EVENT_MESSAGE);

class GENAPI_DECL CEventAdapterU3V : public CEventAdapter {
public:
    CEventAdapterU3V(INodeMap* pNodeMap = NULL);
    virtual ~CEventAdapterU3V();

    virtual void DeliverMessage(const uint8_t msg[], uint32_t numBytes);
    void DeliverEventMessage(const U3V_EVENT_MESSAGE* pEventMessage);
};

}  // namespace GENAPI_NAMESPACE

#endif
