// A file stored on the device as a parameter: availability through "FileSelector", chunked reads and
// writes through GenApi's device file streams, and the whole content as text.
#ifndef PARAMETERCOLLECTION_FILEPARAMETER_H
#define PARAMETERCOLLECTION_FILEPARAMETER_H

#include "IFileParameter.h"
#include "internal/Parameter.h"
#include <memory>

namespace ParameterCollection {

namespace Internal {
class CFileStreamHelper;
}

// Beware: isWriteable() probes by opening the file for writing, which empties it on the simulated camera
// and on many real devices, and a snapshot (getParameterData(), checkParameterDataChanged(), a decoupled
// subscription) asks isWriteable(). Nothing in this project takes snapshots of file parameters or asks
// them whether they are writeable unless a user asks for exactly that.
class PARAMETERCOLLECTION_EXPORT CFileParameter : public IFileParameter, public Internal::CParameter {
    Q_OBJECT

public:
    CFileParameter(QString fileName, QString nodeMapName, QSharedPointer<CObjectState> state,
                   QSharedPointer<Internal::CModeratedParameterEventDecouplerThread> decoupler,
                   QObject* parent = nullptr);
    ~CFileParameter() override;

    long long read(void* buffer, long long length) override;
    bool write(void* buffer, long long length) override;
    void close() override;

    void parseAndSetValue(QString const& text) override;
    QString toString() override;
    bool isReadable() override;
    bool isWriteable() override;
    bool isAvailable() override;
    bool isImplemented() override;
    // True exactly when the file is available: the inverse of the other parameter types, on purpose.
    bool isEmpty() override;
    // Keeps the node map (null detaches) after closing any open stream; answers isAvailable().
    bool attach(GENAPI_NAMESPACE::INodeMap* nodeMap) override;

private:
    Internal::CFileStreamHelper& createHelper();
    // Opens the file for a probe, tells whether the wanted stream opened, and closes it again.
    bool probe(bool forReading);
    template <typename Transfer>
    void abandonOnError(Internal::CFileStreamHelper& helper, Transfer transfer);
    void open(Internal::CFileStreamHelper& helper, bool forReading);

    QString m_FileName;
    GENAPI_NAMESPACE::INodeMap* m_NodeMap;
    std::unique_ptr<Internal::CFileStreamHelper> m_Helper;
    // A transfer failed and so did closing its stream: the device may still hold the file open.
    bool m_DeviceMayHoldFile = false;
};

}  // namespace ParameterCollection

#endif
