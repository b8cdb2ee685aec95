// Event adapter for GigE Vision event messages (GVCP EVENT and EVENTDATA commands, big-endian).
#ifndef GENAPI_EVENTADAPTERGEV_H
#define GENAPI_EVENTADAPTERGEV_H

#include <GenApi/EventAdapter.h>

#if defined(__GNUC__)
#define PACK_STRUCT __attribute__((packed))
#elif defined(_MSC_VER)
#define PACK_STRUCT
#else
#error Unknown platform
#endif

namespace GENAPI_NAMESPACE {

#pragma pack(push, 1)

typedef struct PACK_STRUCT GVCP_REQUEST_HEADER {
    uint8_t Magic;
    uint8_t Flags;
    uint16_t Command;
    uint16_t Length;
    uint16_t ReqId;
} GVCP_REQUEST_HEADER;

typedef struct PACK_STRUCT GVCP_EVENT_ITEM_BASIC {
    uint16_t ReservedOrEventSize;
    uint16_t EventId;
} GVCP_EVENT_ITEM_BASIC;

typedef struct PACK_STRUCT GVCP_EVENT_ITEM {
    uint16_t ReservedOrEventSize;
    uint16_t EventId;
    uint16_t StreamChannelId;
    uint16_t BlockId;
    uint32_t TimestampHigh;
    uint32_t TimestampLow;
} GVCP_EVENT_ITEM;

typedef struct PACK_STRUCT GVCP_EVENT_ITEM_EXTENDED_ID {
    uint16_t ReservedOrEventSize;
    uint16_t EventId;
    uint16_t StreamChannelId;
    uint16_t BlockId;
    uint32_t BlockId64High;
    uint32_t BlockId64Low;
    uint32_t TimestampHigh;
    uint32_t TimestampLow;
} GVCP_EVENT_ITEM_EXTENDED_ID;

typedef struct PACK_STRUCT GVCP_EVENT_REQUEST {
    GVCP_REQUEST_HEADER Header;
    GVCP_EVENT_ITEM Items[1];
} GVCP_EVENT_REQUEST;

typedef struct PACK_STRUCT GVCP_EVENT_REQUEST_EXTENDED_ID {
    GVCP_REQUEST_HEADER Header;
    GVCP_EVENT_ITEM_EXTENDED_ID Items[1];
} GVCP_EVENT_REQUEST_EXTENDED_ID;

typedef struct PACK_STRUCT GVCP_EVENTDATA_REQUEST {
    GVCP_REQUEST_HEADER Header;
    GVCP_EVENT_ITEM Event;
    uint32_t Data[1];
} GVCP_EVENTDATA_REQUEST;

typedef struct PACK_STRUCT GVCP_EVENTDATA_REQUEST_EXTENDED_ID {
    GVCP_REQUEST_HEADER Header;
    GVCP_EVENT_ITEM_EXTENDED_ID Event;
    uint32_t Data[1];
} GVCP_EVENTDATA_REQUEST_EXTENDED_ID;

#pragma pack(pop)

const uint8_t COMMAND_MAGIC = 0x42;

typedef enum GVCP_MESSAGE_TAGS { TAG_EVENT_CMD = 0xc0, TAG_EVENTDATA_CMD = 0xc2 } GVCP_MESSAGE_TAGS;

class GENAPI_DECL CEventAdapterGEV : public CEventAdapter {
public:
    CEventAdapterGEV(INodeMap* pNodeMap = NULL);
    virtual ~CEventAdapterGEV();

    virtual void DeliverMessage(const uint8_t msg[], uint32_t numBytes);
    void DeliverEventMessage(const GVCP_EVENT_REQUEST* pEvent);
    void DeliverEventMessage(const GVCP_EVENTDATA_REQUEST* pEventData);
    void DeliverEventMessage(const GVCP_EVENT_REQUEST_EXTENDED_ID* pEvent);
    void DeliverEventMessage(const GVCP_EVENTDATA_REQUEST_EXTENDED_ID* pEventData);

private:
    void DeliverEventItem(const GVCP_EVENT_ITEM_BASIC* pItem, unsigned int length);
    void AttachItemToPorts(const uint8_t* pItem, uint16_t event_id, unsigned int length);
    template <class EVENT_REQUEST, class EVENT_ITEM>
    void DeliverEventMessageImpl(const EVENT_REQUEST* pEvent);
    template <class EVENTDATA_REQUEST>
    void DeliverEventDataMessageImpl(const EVENTDATA_REQUEST* pEventData);
};

}  // namespace GENAPI_NAMESPACE

#endif
