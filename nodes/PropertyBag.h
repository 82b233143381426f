#pragma once
// The host's property store: named values with defaults, kept as JSON and saved to a file.
// A value equal to its default is not stored, so a control saved with all defaults writes
// nothing. Reading checks the stored value against the type of the default: a value of the
// wrong type raises the type-mismatch error instead of being coerced.

#include "TreeListError.h"
#include "vkTreeListExport.h"
#include <QJsonObject>
#include <QString>
#include <QVariant>

class VKTL_EXPORT PropertyBag {
public:
    // Reads a value. Missing -> `defaultValue`. The default's type says what is expected:
    // bool (a JSON boolean), qint16 (a whole number in 16 bits; beyond raises overflow),
    // qint32 (a whole number in that range), quint32 (32 bits, given signed or unsigned),
    // QString, QVariantMap (a JSON object);
    // an invalid default accepts a string or null. Anything else raises type mismatch (13).
    // Errors name the file and the property (errorAt).
    QVariant ReadProperty(const QString &name, const QVariant &defaultValue) const;
    // The error `cause` met while reading property `name`, with the same number and a text
    // that names the file (when the bag was loaded from one) and the property:
    // `layout.json: "Columns": Overflow`.
    TreeListError errorAt(const QString &name, const TreeListError &cause) const;
    // Stores a value, or removes the entry when the value equals `defaultValue`.
    void WriteProperty(const QString &name, const QVariant &value, const QVariant &defaultValue);

    // True when the bag holds an entry for the name.
    bool contains(const QString &name) const { return m_values.contains(name); }
    // Number of stored entries.
    int count() const { return static_cast<int>(m_values.size()); }
    // Removes every entry.
    void clear() { m_values = QJsonObject(); }
    // The stored entries as JSON.
    const QJsonObject &json() const { return m_values; }

    // Writes the bag to a file atomically: on failure the old file is left as it was.
    bool save(const QString &path, QString *error = nullptr) const;
    // Reads a bag from a file into this one; on a missing, unreadable or malformed file the bag
    // is left unchanged and false is returned with the reason.
    bool load(const QString &path, QString *error = nullptr);
    // The file the entries were last loaded from ("" when they were not).
    const QString &source() const { return m_source; }
    // Replaces the entries from JSON text; malformed text changes nothing and returns false.
    bool fromJson(const QByteArray &text, QString *error = nullptr);

private:
    // The stored value as the default's type says, or the error without the property's name.
    static QVariant convert(const QJsonValue &value, const QVariant &defaultValue);

    QJsonObject m_values;
    QString m_source;
};
