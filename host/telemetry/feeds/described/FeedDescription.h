#pragma once

#include "TelemetryFields.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <optional>
#include <vector>

/// A feed as the user describes it in a JSON file; docs/described-feeds.md specifies the format.
struct FeedDescription
{
    enum class Type { U8, I8, U16, I16, U32, I32, F32, F64 };

    /// A number in a datagram.
    struct Number
    {
        int offset = 0; ///< In bytes.
        Type type = Type::U8;
        std::optional<int> bit; ///< Only this bit of it, as 0 or 1.
        double factor = 1;
        double bias = 0; ///< Added after the factor.
    };

    struct Field
    {
        const TelemetryField *field = nullptr;
        std::optional<Number> number; ///< Without one `constant` counts.
        double constant = 0;
        std::optional<Number> available; ///< The field is available while this isn't 0.
    };

    struct Condition
    {
        int offset = 0;
        QByteArray bytes;
    };

    struct VehicleName
    {
        int offset = 0;
        int length = 0;               ///< Of a text, in bytes; 0 with a number.
        std::optional<Number> number; ///< In place of a text.
        QString prefix;               ///< Before text or number.
    };

    QString name;
    quint16 port = 0;
    std::vector<int> lengths; ///< That a datagram may have, in bytes.
    int minimumLength = 0;    ///< If there are no `lengths`.
    bool bigEndian = false;
    std::vector<Condition> conditions; ///< All of them must hold.
    std::optional<VehicleName> vehicle;
    std::vector<Field> fields;

    static constexpr int LargestFile = 64 * 1024;

    /// Reads a description; nothing if it is wrong. Replaces `errors` by what is wrong, one line
    /// each, with `fileName` and the path of the member, such as "fields.rpm.offset", or the line
    /// if the text isn't JSON. Any bytes are safe.
    static std::optional<FeedDescription> parse(const QByteArray &json, const QString &fileName,
                                                QStringList &errors);

    /// Reads a description from a file in the same way.
    static std::optional<FeedDescription> load(const QString &path, QStringList &errors);
};

/// Size of a number of this type, in bytes.
int sizeOf(FeedDescription::Type type);
