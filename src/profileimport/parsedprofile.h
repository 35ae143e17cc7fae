#pragma once

#include <QMap>
#include <QObject>
#include <QString>

/// One profile (or the block of global settings) as read from a file: plain texts, unchecked.
class ParsedProfile : public QObject
{
    Q_OBJECT

public:
    explicit ParsedProfile(QObject* parent = nullptr) : QObject(parent) {}

    /// The position in the file given by its "id"; 0 for profiles of a charger image, which have
    /// none.
    int getID() const { return id; }
    void setID(int newId) { id = newId; }

    bool getActiveStatus() const { return active; }
    void setActiveStatus(bool status) { active = status; }

    bool getDefaultStatus() const { return isDefault; }
    void setDefaultStatus(bool status) { isDefault = status; }

    bool getModifiableStatus() const { return modifiable; }
    void setModifiableStatus(bool status) { modifiable = status; }

    /// The values' texts by key: the XML tag of a setting's name, or "chemistry".
    QMap<QString, QString> getProperties() const { return properties; }
    void setProperties(const QMap<QString, QString>& newProperties) { properties = newProperties; }

    /// Writes everything to standard output. Kept: part of the interface.
    void print() const;

private:
    int id = 0;
    bool active = false;
    bool isDefault = false;
    bool modifiable = false;
    QMap<QString, QString> properties;
};
