#include "PropertyBag.h"

#include "TreeListError.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonValue>
#include <QSaveFile>
#include <cmath>
#include <limits>

namespace {

[[noreturn]] void mismatch() {
    throw TreeListError(TreeListError::TypeMismatch);
}

qint64 wholeNumber(const QJsonValue &v, qint64 lowest, qint64 highest) {
    if (!v.isDouble())
        mismatch();
    const double d = v.toDouble();
    if (!std::isfinite(d) || d != std::floor(d))
        mismatch();
    if (d < static_cast<double>(lowest) || d > static_cast<double>(highest))
        throw TreeListError(TreeListError::Overflow);
    return static_cast<qint64>(d);
}

QJsonValue toJson(const QVariant &value) {
    switch (value.typeId()) {
    case QMetaType::Bool:
        return value.toBool();
    case QMetaType::QString:
        return value.toString();
    case QMetaType::QVariantMap:
        return QJsonObject::fromVariantMap(value.toMap());
    default:
        if (!value.isValid())
            return QJsonValue(QJsonValue::Null);
        return value.toDouble();
    }
}

} // namespace

QVariant PropertyBag::ReadProperty(const QString &name, const QVariant &defaultValue) const {
    const auto it = m_values.constFind(name);
    if (it == m_values.constEnd())
        return defaultValue;
    try {
        return convert(it.value(), defaultValue);
    } catch (const TreeListError &e) {
        throw errorAt(name, e);
    }
}

TreeListError PropertyBag::errorAt(const QString &name, const TreeListError &cause) const {
    const QString where = m_source.isEmpty() ? QString() : m_source + QStringLiteral(": ");
    return TreeListError(cause.number(),
                         QStringLiteral("%1\"%2\": %3").arg(where, name, cause.description()));
}

QVariant PropertyBag::convert(const QJsonValue &v, const QVariant &defaultValue) {
    switch (defaultValue.typeId()) {
    case QMetaType::Bool:
        if (!v.isBool())
            mismatch();
        return v.toBool();
    case QMetaType::Short:
        return QVariant::fromValue(static_cast<qint16>(wholeNumber(
            v, std::numeric_limits<qint16>::min(), std::numeric_limits<qint16>::max())));
    case QMetaType::Int:
        return QVariant::fromValue(static_cast<qint32>(wholeNumber(
            v, std::numeric_limits<qint32>::min(), std::numeric_limits<qint32>::max())));
    case QMetaType::UInt:
        // 32 bits written by a program that sees them as signed (a system colour as
        // -2147483643) are the same value as their unsigned reading.
        return QVariant::fromValue(static_cast<quint32>(wholeNumber(
            v, std::numeric_limits<qint32>::min(), std::numeric_limits<quint32>::max())));
    case QMetaType::QString:
        if (!v.isString())
            mismatch();
        return v.toString();
    case QMetaType::QVariantMap:
        if (!v.isObject())
            mismatch();
        return v.toObject().toVariantMap();
    default:
        if (v.isNull())
            return QVariant();
        if (!v.isString())
            mismatch();
        return v.toString();
    }
}

void PropertyBag::WriteProperty(const QString &name, const QVariant &value,
                                const QVariant &defaultValue) {
    const QJsonValue stored = toJson(value);
    if (stored == toJson(defaultValue))
        m_values.remove(name);
    else
        m_values.insert(name, stored);
}

bool PropertyBag::save(const QString &path, QString *error) const {
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        if (error)
            *error = file.errorString();
        return false;
    }
    file.write(QJsonDocument(m_values).toJson(QJsonDocument::Indented));
    if (!file.commit()) {
        if (error)
            *error = file.errorString();
        return false;
    }
    return true;
}

bool PropertyBag::load(const QString &path, QString *error) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        if (error)
            *error = file.errorString();
        return false;
    }
    if (!fromJson(file.readAll(), error))
        return false;
    m_source = path;
    return true;
}

bool PropertyBag::fromJson(const QByteArray &text, QString *error) {
    QJsonParseError parseError;
    const QJsonDocument doc = QJsonDocument::fromJson(text, &parseError);
    if (parseError.error != QJsonParseError::NoError || !doc.isObject()) {
        if (error)
            *error = parseError.error != QJsonParseError::NoError
                         ? parseError.errorString()
                         : QStringLiteral("the file does not hold a JSON object");
        return false;
    }
    m_values = doc.object();
    m_source.clear();
    return true;
}
