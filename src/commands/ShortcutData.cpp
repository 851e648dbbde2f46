// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "commands/ShortcutData.h"

#include "commands/KeyCodes.h"

#include <QKeySequence>
#include <QStringList>

#include <cmath>
#include <limits>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

QString keyName(quint16 keyCode)
{
    if (const auto character = keyCodeToCharacter(keyCode))
        return QString(character->toUpper());
    return u"(%1)"_s.arg(keyCode);
}

QStringList modifierSymbols(quint32 flags)
{
    QStringList symbols;
    if (flags & KeyModifier::control)
        symbols.append(u"⌃"_s);
    if (flags & KeyModifier::option)
        symbols.append(u"⌥"_s);
    if (flags & KeyModifier::shift)
        symbols.append(u"⇧"_s);
    if (flags & KeyModifier::command)
        symbols.append(u"⌘"_s);
    return symbols;
}

/// The toolkit calls the Super key "Meta", as only one of the desktops does.
QString withSuper(QString text)
{
    static const bool desktopSaysMeta =
        qEnvironmentVariable("XDG_CURRENT_DESKTOP").contains(QLatin1String("KDE"));
    if (!desktopSaysMeta)
        text.replace(QLatin1String("Meta+"), QLatin1String("Super+"));
    return text;
}

template <typename Number>
std::optional<Number> wholeNumber(const QJsonValue& value)
{
    const double number = value.toDouble(-1);
    if (!value.isDouble() || number < 0 || number > double(std::numeric_limits<Number>::max()) ||
        number != std::floor(number))
        return std::nullopt;
    return Number(number);
}

} // namespace

QString ShortcutData::displayString() const
{
    return (modifierSymbols(modifierFlags) << keyName(keyCode)).join(u' ');
}

QString ShortcutData::desktopText() const
{
    const auto key = keyOfCode(keyCode);
    if (!key) {
        const QString modifiers = modifierDesktopText(modifierFlags);
        return modifiers.isEmpty() ? keyName(keyCode) : modifiers + u'+' + keyName(keyCode);
    }
    const QKeySequence sequence(QKeyCombination(keyboardModifiersOf(modifierFlags), *key));
    return withSuper(sequence.toString(QKeySequence::NativeText));
}

QString modifierDisplayString(quint32 modifierFlags)
{
    return modifierSymbols(modifierFlags).join(u' ');
}

QString modifierDesktopText(quint32 modifierFlags)
{
    const QKeySequence sequence(QKeyCombination(keyboardModifiersOf(modifierFlags), Qt::Key_A));
    QString text = withSuper(sequence.toString(QKeySequence::NativeText));
    text.chop(2);
    return text;
}

QJsonObject toJson(const ShortcutData& shortcut)
{
    return {{u"keyCode"_s, int(shortcut.keyCode)},
            {u"modifierFlags"_s, qint64(shortcut.modifierFlags)}};
}

std::optional<ShortcutData> shortcutDataFromJson(const QJsonValue& value)
{
    const auto keyCode = wholeNumber<quint16>(value[u"keyCode"]);
    const auto flags = wholeNumber<quint32>(value[u"modifierFlags"]);
    if (!value.isObject() || !keyCode || !flags)
        return std::nullopt;
    return ShortcutData{*keyCode, *flags};
}

} // namespace orvane
