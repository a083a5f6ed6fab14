// Never run, because no Mac was available.

#include "platform/SettingsStore.h"

#include <QByteArray>

#include <CoreFoundation/CoreFoundation.h>
#include <memory>

namespace ambulet {

namespace {

struct Release {
    void operator()(CFTypeRef object) const { CFRelease(object); }
};
template <typename Ref>
using Owned = std::unique_ptr<std::remove_pointer_t<Ref>, Release>;

Owned<CFStringRef> textFrom(const QString& text) {
    return Owned<CFStringRef>(text.toCFString());
}

QVariant valueFrom(CFPropertyListRef value) {
    const CFTypeID type = CFGetTypeID(value);
    if (type == CFStringGetTypeID()) {
        return QString::fromCFString(static_cast<CFStringRef>(value));
    }
    if (type == CFDataGetTypeID()) {
        return QByteArray::fromCFData(static_cast<CFDataRef>(value));
    }
    if (type == CFNumberGetTypeID()) {
        double number = 0;
        CFNumberGetValue(static_cast<CFNumberRef>(value), kCFNumberDoubleType, &number);
        return number;
    }
    return {};  // the value is neither a text nor data nor a number
}

}  // namespace

SettingsStore::SettingsStore(const QString& place) : _place(place) {}

QString SettingsStore::placeFor(const Bundle& bundle) {
    return bundle.identifier().value_or(QString());
}

std::optional<QVariant> SettingsStore::value(const QString& key) {
    CFPreferencesSynchronize(textFrom(_place).get(), kCFPreferencesCurrentUser,
                             kCFPreferencesAnyHost);
    const Owned<CFPropertyListRef> value(
        CFPreferencesCopyValue(textFrom(key).get(), textFrom(_place).get(),
                               kCFPreferencesCurrentUser, kCFPreferencesAnyHost));
    return value ? std::optional(valueFrom(value.get())) : std::nullopt;
}

void SettingsStore::setValue(const QString& key, const QVariant& value) {
    const Owned<CFTypeRef> stored(value.typeId() == QMetaType::QByteArray
                                      ? static_cast<CFTypeRef>(value.toByteArray().toCFData())
                                      : static_cast<CFTypeRef>(value.toString().toCFString()));
    // If the system cannot write a value, it keeps the value in memory.
    CFPreferencesSetValue(textFrom(key).get(), stored.get(), textFrom(_place).get(),
                          kCFPreferencesCurrentUser, kCFPreferencesAnyHost);
    CFPreferencesSynchronize(textFrom(_place).get(), kCFPreferencesCurrentUser,
                             kCFPreferencesAnyHost);
}

bool SettingsStore::flush() {
    return CFPreferencesSynchronize(textFrom(_place).get(), kCFPreferencesCurrentUser,
                                    kCFPreferencesAnyHost);
}

}  // namespace ambulet
