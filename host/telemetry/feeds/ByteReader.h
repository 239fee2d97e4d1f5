#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QtEndian>

/// Reads little-endian numbers from a datagram, which must outlive the reader. The caller checks
/// first that a number lies within.
class ByteReader
{
public:
    explicit ByteReader(const QByteArray &bytes)
        : bytes(bytes)
    {
    }

    template<typename Number> Number at(int offset) const
    {
        Q_ASSERT(offset >= 0 && offset + static_cast<int>(sizeof(Number)) <= bytes.size());
        return qFromLittleEndian<Number>(bytes.constData() + offset);
    }

    float real(int offset) const { return at<float>(offset); }

private:
    const QByteArray &bytes;
};
