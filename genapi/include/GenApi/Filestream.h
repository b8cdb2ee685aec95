// Device files through the SFNC file-access features: a protocol adapter and std stream buffers and
// streams over it. Like GenApi's own header it is not self-contained: it needs GenApi/GenApi.h first.
#ifndef GENAPI_FILESTREAM_H
#define GENAPI_FILESTREAM_H

#include <iosfwd>
#include <Base/GCUtilities.h>
#include <GenICamFwd.h>
#include <unistd.h>
#include <Base/GCLinkage.h>
#include <algorithm>
#include <cstring>
#include <ios>
#include <istream>
#include <ostream>
#include <streambuf>

namespace GENAPI_NAMESPACE {

struct GENAPI_DECL_ABSTRACT IFileProtocolAdapter {
    virtual bool attach(INodeMap* pInterface) = 0;
    virtual bool openFile(const char* pFileName, std::ios_base::openmode mode) = 0;
    virtual bool closeFile(const char* pFileName) = 0;
    virtual GenICam_streamsize write(const char* buf, int64_t offs, int64_t len, const char* pFileName) = 0;
    virtual GenICam_streamsize read(char* buf, int64_t offs, GenICam_streamsize len,
                                    const char* pFileName) = 0;
    virtual int64_t getBufSize(const char* pFileName, std::ios_base::openmode mode) = 0;
    virtual bool deleteFile(const char* pFileName) = 0;
    virtual ~IFileProtocolAdapter() {}
};

class GENAPI_DECL FileProtocolAdapter : public IFileProtocolAdapter {
public:
    FileProtocolAdapter();
    virtual ~FileProtocolAdapter();

    virtual bool attach(INodeMap* pInterface);
    virtual bool openFile(const char* pFileName, std::ios_base::openmode mode);
    virtual bool closeFile(const char* pFileName);
    virtual GenICam_streamsize write(const char* buf, int64_t offs, int64_t len, const char* pFileName);
    virtual GenICam_streamsize read(char* buf, int64_t offs, GenICam_streamsize len, const char* pFileName);
    virtual int64_t getBufSize(const char* pFileName, std::ios_base::openmode mode);
    virtual bool deleteFile(const char* pFileName);

private:
    FileProtocolAdapter(const FileProtocolAdapter&);
    FileProtocolAdapter& operator=(const FileProtocolAdapter&);
    void WaitUntilFileOperationExecuteDone(bool Validate = true);

    class CImpl;
    CImpl* m_pImpl;
};

// An adapter attached to the map with the file open, or null when either fails; an exception from the
// device passes on after the adapter is freed.
inline FileProtocolAdapter* OpenDeviceFile(INodeMap* pInterface, const char* pFileName,
                                           std::ios_base::openmode mode) {
    FileProtocolAdapter* adapter = new FileProtocolAdapter();
    try {
        if (adapter->attach(pInterface) && adapter->openFile(pFileName, mode))
            return adapter;
    } catch (...) {
        delete adapter;
        throw;
    }
    delete adapter;
    return nullptr;
}

// What a device file buffer holds while its file is open: the adapter, a transfer buffer of
// FileAccessBuffer's size, the file's name and the offset of the next transfer.
template <typename CharType>
class DevFileTransfer {
public:
    DevFileTransfer() : m_pAdapter(nullptr), m_pBuffer(nullptr), m_BufSize(0), m_fpos(0) {}
    ~DevFileTransfer() { release(); }

    // Opens the file and allocates the buffer; false, holding nothing, when either fails.
    bool open(INodeMap* pInterface, const char* pFileName, std::ios_base::openmode mode) {
        if (m_pAdapter)
            return false;
        m_pAdapter = OpenDeviceFile(pInterface, pFileName, mode);
        if (!m_pAdapter)
            return false;
        m_file = pFileName;
        m_BufSize =
            GENICAM_NAMESPACE::INTEGRAL_CAST<GenICam_streamsize>(m_pAdapter->getBufSize(pFileName, mode));
        if (m_BufSize <= 0) {
            m_pAdapter->closeFile(pFileName);
            release();
            return false;
        }
        m_pBuffer = new CharType[static_cast<size_t>(m_BufSize) / sizeof(CharType)];
        m_fpos = 0;
        return true;
    }
    // Runs `flush`, then closes the file; everything is released even when the device fails, so that
    // nothing is left half open. True when both succeeded.
    template <typename Flush>
    bool close(Flush flush) {
        bool done = false;
        try {
            const bool flushed = flush();
            done = m_pAdapter->closeFile(m_file.c_str()) && flushed;
        } catch (...) {
            release();
            throw;
        }
        release();
        return done;
    }
    void release() {
        delete m_pAdapter;
        m_pAdapter = nullptr;
        delete[] m_pBuffer;
        m_pBuffer = nullptr;
        m_BufSize = 0;
    }

    bool isOpen() const { return m_pAdapter != nullptr; }
    FileProtocolAdapter& adapter() { return *m_pAdapter; }
    CharType* buffer() { return m_pBuffer; }
    // The buffer's length in characters, and in bytes.
    size_t count() const { return static_cast<size_t>(m_BufSize) / sizeof(CharType); }
    GenICam_streamsize bytes() const { return m_BufSize; }
    const char* file() const { return m_file.c_str(); }
    int64_t& position() { return m_fpos; }

private:
    DevFileTransfer(const DevFileTransfer&);
    DevFileTransfer& operator=(const DevFileTransfer&);

    FileProtocolAdapter* m_pAdapter;
    CharType* m_pBuffer;
    GenICam_streamsize m_BufSize;
    GENICAM_NAMESPACE::gcstring m_file;
    int64_t m_fpos;
};

// Reads a device file sequentially from offset 0, one FileAccessBuffer at a time.
template <typename CharType, typename Traits>
class IDevFileStreamBuf : public std::basic_streambuf<CharType, Traits> {
    typedef std::basic_streambuf<CharType, Traits> base;

public:
    typedef IDevFileStreamBuf<CharType, Traits> filebuf_type;
    typedef typename Traits::int_type int_type;

    IDevFileStreamBuf() {}
    ~IDevFileStreamBuf() {
        try {
            close();
        } catch (...) {
        }
    }

    filebuf_type* open(INodeMap* pInterface, const char* pFileName,
                       std::ios_base::openmode mode = std::ios_base::in) {
        if (!m_Transfer.open(pInterface, pFileName, mode))
            return nullptr;
        CharType* buffer = m_Transfer.buffer();
        this->setg(buffer, buffer, buffer);
        return this;
    }
    bool is_open() const { return m_Transfer.isOpen(); }
    filebuf_type* close() {
        if (!m_Transfer.isOpen())
            return nullptr;
        this->setg(nullptr, nullptr, nullptr);
        return m_Transfer.close([] { return true; }) ? this : nullptr;
    }

protected:
    int_type underflow() {
        if (this->gptr() < this->egptr())
            return Traits::to_int_type(*this->gptr());
        if (!m_Transfer.isOpen())
            return Traits::eof();
        CharType* buffer = m_Transfer.buffer();
        const GenICam_streamsize count = m_Transfer.adapter().read(
            reinterpret_cast<char*>(buffer), m_Transfer.position(), m_Transfer.bytes(), m_Transfer.file());
        if (count <= 0)
            return Traits::eof();
        m_Transfer.position() += count;
        this->setg(buffer, buffer, buffer + GENICAM_NAMESPACE::INTEGRAL_CAST<int>(count) / sizeof(CharType));
        return Traits::to_int_type(*this->gptr());
    }
    int_type pbackfail(int_type c) {
        if (this->eback() < this->gptr() && (Traits::eq_int_type(c, Traits::eof()) ||
                                             Traits::eq(Traits::to_char_type(c), this->gptr()[-1]))) {
            this->gbump(-1);
            return Traits::not_eof(c);
        }
        return Traits::eof();
    }

private:
    DevFileTransfer<CharType> m_Transfer;
};

// Writes a device file sequentially from offset 0; every full buffer, sync and close flushes a chunk.
template <typename CharType, typename Traits>
class ODevFileStreamBuf : public std::basic_streambuf<CharType, Traits> {
    typedef std::basic_streambuf<CharType, Traits> base;

public:
    typedef ODevFileStreamBuf<CharType, Traits> filebuf_type;
    typedef typename Traits::int_type int_type;

    ODevFileStreamBuf() {}
    // A device failure while the last chunk is flushed cannot leave a destructor.
    ~ODevFileStreamBuf() {
        try {
            close();
        } catch (...) {
        }
    }

    filebuf_type* open(INodeMap* pInterface, const char* pFileName, std::ios_base::openmode mode) {
        if (!m_Transfer.open(pInterface, pFileName, mode))
            return nullptr;
        this->setp(m_Transfer.buffer(), m_Transfer.buffer() + m_Transfer.count());
        return this;
    }
    bool is_open() const { return m_Transfer.isOpen(); }
    // The buffer is released even when the device fails, so that the destructor has nothing left to do.
    filebuf_type* close() {
        if (!m_Transfer.isOpen())
            return nullptr;
        bool done = false;
        try {
            done = m_Transfer.close([this] { return sync() == 0; });
        } catch (...) {
            this->setp(nullptr, nullptr);
            throw;
        }
        this->setp(nullptr, nullptr);
        return done ? this : nullptr;
    }

protected:
    std::streamsize xsputn(const CharType* s, std::streamsize n) {
        std::streamsize written = 0;
        while (written < n) {
            std::streamsize room = this->epptr() - this->pptr();
            if (room == 0) {
                if (sync() != 0)
                    return written;
                room = this->epptr() - this->pptr();
                if (room == 0)
                    return written;
            }
            const std::streamsize chunk = std::min(room, n - written);
            Traits::copy(this->pptr(), s + written, static_cast<size_t>(chunk));
            this->pbump(GENICAM_NAMESPACE::INTEGRAL_CAST<int>(chunk));
            written += chunk;
        }
        return written;
    }
    int_type overflow(int_type c) {
        if (sync() != 0)
            return Traits::eof();
        if (!Traits::eq_int_type(c, Traits::eof())) {
            *this->pptr() = Traits::to_char_type(c);
            this->pbump(1);
        }
        return Traits::not_eof(c);
    }
    int sync() {
        if (!m_Transfer.isOpen())
            return -1;
        const int64_t count = (this->pptr() - this->pbase()) * static_cast<int64_t>(sizeof(CharType));
        if (count == 0)
            return 0;
        const GenICam_streamsize written = m_Transfer.adapter().write(
            reinterpret_cast<const char*>(this->pbase()), m_Transfer.position(), count, m_Transfer.file());
        if (written != count)
            return -1;
        m_Transfer.position() += count;
        this->setp(m_Transfer.buffer(), this->epptr());
        return 0;
    }

private:
    DevFileTransfer<CharType> m_Transfer;
};

// The stream around a device file buffer: open and close set the stream's state as std streams do.
template <typename Stream, typename Buffer, std::ios_base::openmode DefaultMode>
class DevFileStreamT : public Stream {
public:
    typedef Buffer filebuf_type;

    DevFileStreamT() : Stream(&m_streambuf) {}
    DevFileStreamT(INodeMap* pInterface, const char* pFileName, std::ios_base::openmode mode = DefaultMode)
        : Stream(&m_streambuf) {
        open(pInterface, pFileName, mode);
    }
    filebuf_type* rdbuf() const { return const_cast<filebuf_type*>(&m_streambuf); }
    bool is_open() const { return m_streambuf.is_open(); }
    void open(INodeMap* pInterface, const char* pFileName, std::ios_base::openmode mode = DefaultMode) {
        if (!m_streambuf.open(pInterface, pFileName, mode))
            this->setstate(std::ios_base::failbit);
        else
            this->clear();
    }
    void close() {
        if (!m_streambuf.close())
            this->setstate(std::ios_base::failbit);
    }

private:
    filebuf_type m_streambuf;
};

template <typename CharType, typename Traits>
class ODevFileStreamBase
    : public DevFileStreamT<std::basic_ostream<CharType, Traits>, ODevFileStreamBuf<CharType, Traits>,
                            std::ios_base::out | std::ios_base::trunc> {
    typedef DevFileStreamT<std::basic_ostream<CharType, Traits>, ODevFileStreamBuf<CharType, Traits>,
                           std::ios_base::out | std::ios_base::trunc>
        base;

public:
    using base::base;
};

template <typename CharType, typename Traits>
class IDevFileStreamBase : public DevFileStreamT<std::basic_istream<CharType, Traits>,
                                                 IDevFileStreamBuf<CharType, Traits>, std::ios_base::in> {
    typedef DevFileStreamT<std::basic_istream<CharType, Traits>, IDevFileStreamBuf<CharType, Traits>,
                           std::ios_base::in>
        base;

public:
    using base::base;
};

typedef ODevFileStreamBase<char, std::char_traits<char> > ODevFileStream;
typedef IDevFileStreamBase<char, std::char_traits<char> > IDevFileStream;

}  // namespace GENAPI_NAMESPACE

#endif
