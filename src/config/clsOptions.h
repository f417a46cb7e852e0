// The program's settings in options.xml beside the program. Each access goes to the document in memory;
// setters reach the disk only with saveOptions. The database's version is kept in the database.
#pragma once

#include "platform/xml/XmlDocument.h"

#include <QString>
#include <cstdint>

namespace sorvanto {

struct Context;

class clsOptions {
public:
    /// Loads the file, or at a first start writes a new one and asks the language. The context gets the way to the
    /// database's path and to the dialog.
    explicit clsOptions(Context& context);
    ~clsOptions();

    /// Writes the document to its file. A document that could not be read has nothing to write: the file
    /// on the disk stays as it is.
    void saveOptions();

    /// Why options.xml can't be read; empty when it was.
    QString problem() const { return m_problem; }
    /// Goes on with the last file that could be read, or with new options (which ask the language as at a first
    /// start); the broken file is kept as options.broken.xml. Failures are reported.
    void takeLastGood();
    void startAnew();

    std::int16_t Language() const;
    void Language(std::int16_t number);
    std::int16_t CommPort() const;
    void CommPort(std::int16_t number);
    QString DBLocation() const;
    void DBLocation(const QString& path);
    QString DefPrinter();
    void DefPrinter(const QString& name);
    QString DefCurrency();
    void DefCurrency(const QString& symbol);
    QString StoreName() const;
    void StoreName(const QString& text);
    QString Address() const;
    void Address(const QString& text);
    QString City() const;
    void City(const QString& text);
    QString State() const;
    void State(const QString& text);
    QString Zip() const;
    void Zip(const QString& text);
    QString Phone() const;
    void Phone(const QString& text);
    QString Fax() const;
    void Fax(const QString& text);
    QString DEA() const;
    void DEA(const QString& text);
    std::int16_t ShowPatients();
    void ShowPatients(std::int16_t flag);
    std::int16_t OverrideSpeed();
    void OverrideSpeed(std::int16_t flag);

    /// Text of the version of the database; empty when it can't be read.
    QString DBVersion() const;
    /// Written to the database as a bare number.
    void DBVersion(const QString& version);

private:
    void Class_Initialize();
    void Class_Terminate();
    void load();
    void CreateConfig();
    void createNode(const QString& parentName, const QString& nodeName, const QString& nodeText);
    /// Throws objectNotSet when the element is missing.
    platform::XmlNode node(const QString& path) const;
    /// The element, made with the repair default (and the file saved) when it is missing.
    platform::XmlNode repairedNode(const QString& parent, const QString& name, const QString& repairDefault);

    Context& m_context;
    platform::XmlDocumentPtr m_document;
    QString m_path;
    QString m_problem;
};

}  // namespace sorvanto
