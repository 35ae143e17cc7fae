#include "settingsui/storabletextvalidator.h"

#include "CBGenerator/storabletext.h"

StorableTextValidator::StorableTextValidator(QObject* parent) : QValidator(parent) {}

void StorableTextValidator::tolerate(const QString& text)
{
    tolerated = StorableText::unstorable(text);
}

QValidator::State StorableTextValidator::validate(QString& input, int& /*position*/) const
{
    QString characters;
    for (const QChar character : StorableText::unstorable(input)) {
        if (!tolerated.contains(character)) {
            characters.append(character);
        }
    }
    if (characters.isEmpty()) {
        return Acceptable;
    }
    emit refused(characters);
    return Invalid;
}
