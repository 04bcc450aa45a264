#include "platform/settings/UserDefaults.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QScopeGuard>
#include <QSettings>
#include <QString>
#include <QVariant>

#include <array>
#include <charconv>
#include <map>
#include <string_view>
#include <utility>
#include <variant>

namespace kelo {
namespace {

std::string textOfNumber(float value)
{
    // Longest: sign, nine digits, point, exponent.
    std::array<char, 32> text;
    const auto result = std::to_chars(text.data(), text.data() + text.size(), value);
    return {text.data(), result.ptr};
}

float numberOfText(std::string_view text)
{
    float value = 0.0f;
    const char *end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, value);
    return result.ec == std::errc() && result.ptr == end ? value : 0.0f;
}

class MemoryUserDefaults : public UserDefaults
{
public:
    void setData_forKey(const Bytes &data, const std::string &key) override { values_[key] = data; }
    void setFloat_forKey(float value, const std::string &key) override
    {
        values_[key] = textOfNumber(value);
    }
    void setString_forKey(const std::string &value, const std::string &key) override
    {
        values_[key] = value;
    }
    void removeObjectForKey(const std::string &key) override { values_.erase(key); }

    std::optional<Bytes> dataForKey(const std::string &key) const override
    {
        return valueForKey<Bytes>(key);
    }
    float floatForKey(const std::string &key) const override
    {
        return numberOfText(stringForKey(key).value_or(std::string()));
    }
    std::optional<std::string> stringForKey(const std::string &key) const override
    {
        return valueForKey<std::string>(key);
    }

private:
    template<class Value>
    std::optional<Value> valueForKey(const std::string &key) const
    {
        const auto found = values_.find(key);
        if (found == values_.end()) return std::nullopt;
        const Value *value = std::get_if<Value>(&found->second);
        return value ? std::optional<Value>(*value) : std::nullopt;
    }

    std::map<std::string, std::variant<Bytes, std::string>> values_;
};

/// The settings' own keys are paths without empty parts; ours are any text.
QString settingsKey(const std::string &key)
{
    if (key.empty()) return QStringLiteral("%"); // no other key gives a bare percent sign
    QString encoded = QString::fromStdString(key);
    encoded.replace(QLatin1Char('%'), QLatin1String("%25"));
    encoded.replace(QLatin1Char('/'), QLatin1String("%2F"));
    encoded.replace(QLatin1Char('\\'), QLatin1String("%5C"));
    return encoded;
}

QString orLibraryName(const QString &name)
{
    return name.isEmpty() ? QStringLiteral("keloOpenGL") : name;
}

class SettingsUserDefaults : public UserDefaults
{
public:
    SettingsUserDefaults()
        : settings_(QSettings::NativeFormat, QSettings::UserScope,
                    orLibraryName(QCoreApplication::organizationName()),
                    orLibraryName(QCoreApplication::applicationName()))
    {
        // The administrator's and the organisation's settings are not the user's.
        settings_.setFallbacksEnabled(false);
    }

    void setData_forKey(const Bytes &data, const std::string &key) override
    {
        store(key, QByteArray(reinterpret_cast<const char *>(data.data()),
                              static_cast<qsizetype>(data.size())));
    }
    void setFloat_forKey(float value, const std::string &key) override
    {
        // As text: the file keeps no types of numbers, and its own conversion goes through double.
        store(key, QString::fromStdString(textOfNumber(value)));
    }
    void setString_forKey(const std::string &value, const std::string &key) override
    {
        store(key, QString::fromStdString(value));
    }
    void removeObjectForKey(const std::string &key) override
    {
        settings_.remove(settingsKey(key));
        write();
    }
    void performBatch(const std::function<void()> &changes) override
    {
        ++batchDepth_;
        const auto end = qScopeGuard([this] {
            --batchDepth_;
            write();
        });
        changes();
    }

    std::optional<Bytes> dataForKey(const std::string &key) const override
    {
        const QVariant value = settings_.value(settingsKey(key));
        if (value.typeId() != QMetaType::QByteArray) return std::nullopt;
        const QByteArray data = value.toByteArray();
        return Bytes(data.begin(), data.end());
    }
    float floatForKey(const std::string &key) const override
    {
        return numberOfText(stringForKey(key).value_or(std::string()));
    }
    std::optional<std::string> stringForKey(const std::string &key) const override
    {
        const QVariant value = settings_.value(settingsKey(key));
        if (!value.isValid() || value.typeId() == QMetaType::QByteArray) return std::nullopt;
        return value.toString().toStdString();
    }

private:
    void store(const std::string &key, const QVariant &value)
    {
        settings_.setValue(settingsKey(key), value);
        write();
    }

    void write()
    {
        // The store is never destroyed, and a program may end without its event loop running.
        if (batchDepth_ == 0) settings_.sync();
    }

    QSettings settings_;
    int batchDepth_ = 0;
};

std::unique_ptr<UserDefaults> &standardSlot()
{
    // Never destroyed: objects that end at exit may still use it.
    static auto *slot = new std::unique_ptr<UserDefaults>;
    return *slot;
}

} // namespace

UserDefaults::~UserDefaults() = default;

void UserDefaults::performBatch(const std::function<void()> &changes)
{
    changes();
}

UserDefaults &UserDefaults::standardUserDefaults()
{
    auto &slot = standardSlot();
    if (!slot) slot = std::make_unique<SettingsUserDefaults>();
    return *slot;
}

std::unique_ptr<UserDefaults>
UserDefaults::setStandardUserDefaults(std::unique_ptr<UserDefaults> store)
{
    return std::exchange(standardSlot(), std::move(store));
}

std::unique_ptr<UserDefaults> UserDefaults::inMemory()
{
    return std::make_unique<MemoryUserDefaults>();
}

} // namespace kelo
