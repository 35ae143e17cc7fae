#pragma once

#include <QMap>
#include <QObject>
#include <QString>

/// One profile (or the block of global settings) as a file holds it: plain texts, nothing checked.
class ParsedProfile : public QObject
{
    Q_OBJECT

public:
    explicit ParsedProfile(QObject* parent = nullptr) : QObject(parent) {}

    /// Position in the file as its "id" tells; profiles of a charger image have none (0).
    int getID() const { return id; }
    void setID(int newId) { id = newId; }

    bool getActiveStatus() const { return active; }
    void setActiveStatus(bool status) { active = status; }

    bool getDefaultStatus() const { return isDefault; }
    void setDefaultStatus(bool status) { isDefault = status; }

    bool getModifiableStatus() const { return modifiable; }
    void setModifiableStatus(bool status) { modifiable = status; }

    /// Value texts by key: the XML tag of a setting's name, or "chemistry".
    QMap<QString, QString> getProperties() const { return properties; }
    void setProperties(const QMap<QString, QString>& newProperties) { properties = newProperties; }

    /// Writes everything to standard output.
    void print() const;

private:
    int id = 0;
    bool active = false;
    bool isDefault = false;
    bool modifiable = false;
    QMap<QString, QString> properties;
};
