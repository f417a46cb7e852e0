// One batch that was made: a frozen copy of formula, ingredients, cost and the mixer's results.
#pragma once

#include "platform/basic/Currency.h"
#include "platform/data/Recordset.h"
#include "platform/xml/XmlDocument.h"

#include <QDateTime>
#include <QString>
#include <cstdint>
#include <memory>

namespace sorvanto {

class clsLog;
using clsLogPtr = std::shared_ptr<clsLog>;

class clsLog {
public:
    clsLog();

    std::int16_t LogID = 0;
    std::int16_t FormulaID = 0;
    std::int16_t log_Quantity = 0;
    std::int16_t log_JarSize = 0;
    QString log_NDC;
    QDateTime log_Date;
    QString log_Lot;
    QString log_Initials;
    QString log_Verified;
    platform::XmlDocumentPtr log_Results;
    platform::XmlDocumentPtr log_Mix;
    QString log_Version;
    QString log_Name;
    QString log_Desc;
    QString log_Strength;
    QString log_Units;
    std::int16_t log_FormType = 0;
    platform::Currency log_Cost;
    platform::Currency log_AWP;
    QString log_Notes;
    platform::RecordsetPtr Chemical;  ///< the frozen lines

    /// The same batch in an object of its own, which stays as it is while this one opens another. The lines
    /// are the same set until then.
    clsLogPtr copy() const;
    bool deleteLog(const clsLogPtr& Log);
    /// Asks for the initials and writes the batch; nothing when cancelled or failed. Results may be null.
    clsLogPtr addLog(const platform::XmlDocumentPtr& Formula, const platform::XmlDocumentPtr& Results);
    /// Fills this object: by key (empty search), NDC ("#" first), lot ("?" first) or name.
    void openLog(std::int32_t key, const QString& Search);
    bool saveLog(const clsLogPtr& Log);

private:
    QString strSQL;
};

}  // namespace sorvanto
