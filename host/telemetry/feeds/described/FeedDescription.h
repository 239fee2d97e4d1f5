#pragma once

#include "TelemetryFields.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <optional>
#include <vector>

/// A feed as a user describes it in a JSON file; docs/described-feeds.md tells the form.
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
        std::optional<Number> number; ///< Without it `constant` is meant.
        double constant = 0;
        std::optional<Number> available; ///< The field is filled while this isn't 0.
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
        std::optional<Number> number; ///< Which vehicle it is.
        QString prefix;               ///< Before text or number.
    };

    QString name;
    quint16 port = 0;
    std::vector<int> lengths; ///< Of a datagram, in bytes; any one of them.
    int minimumLength = 0;    ///< Where there are no `lengths`.
    bool bigEndian = false;
    std::vector<Condition> conditions; ///< All of them must hold.
    std::optional<VehicleName> vehicle;
    std::vector<Field> fields;

    static constexpr int LargestFile = 64 * 1024;

    /// Reads a description. `fileName` is for the messages: what is wrong comes back in `errors`,
    /// one line each with the file, and the member as "fields.rpm.offset" or, where the text is
    /// no JSON, the line. Any bytes are safe.
    static std::optional<FeedDescription> parse(const QByteArray &json, const QString &fileName,
                                                QStringList &errors);

    /// Reads a description from a file, in the same way.
    static std::optional<FeedDescription> load(const QString &path, QStringList &errors);
};

/// Bytes that a number of this type takes.
int sizeOf(FeedDescription::Type type);
