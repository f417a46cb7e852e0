// A report: a definition, the rows that feed it, and the events in which its own code fills the controls.
// A report object is made for one use. Derived classes override the events they need; an event that
// throws ends the report, and the error comes out of ReportRun::makePage once.
#pragma once

#include "platform/data/Recordset.h"
#include "platform/report/ReportDefinition.h"

#include <QHash>
#include <QString>
#include <QStringList>
#include <QVariant>

namespace platform {

/// Where the preview window stands: parts of the screen's size, and its top edge in twips of the screen.
struct PreviewPlace {
    double width = 0.8;
    double height = 0.95;
    int top = 50;
};

class Report {
public:
    explicit Report(ReportDefinition definition);
    virtual ~Report();
    Report(const Report&) = delete;
    Report& operator=(const Report&) = delete;

    const ReportDefinition& definition() const { return m_definition; }

    /// Title of the preview window and of the PDF.
    QString caption;
    /// Proposed for a file of it, without ending; empty: the caption.
    QString fileName;
    /// Printer to offer; empty or unknown leaves the choice to the user.
    QString printerName;
    PreviewPlace previewPlace;

    /// The rows, read once from the current row forward. Without rows fetchData alone says when to end.
    void setRows(RecordsetPtr rows);
    const RecordsetPtr& rows() const { return m_rows; }

    /// A control by its name; throws itemNotFound.
    const Control& control(const QString& name) const;
    void setText(const QString& name, const QString& text);
    /// A name with what must stay whole behind it, such as a strength, and a caption in front: where all are
    /// too long together, the name is shortened in front of its first strength.
    void setName(const QString& name, const QString& words, const QString& tail, const QString& lead = {});
    /// Shows a number, money or date by a picture; a spreadsheet gets the value itself.
    void setValue(const QString& name, const QVariant& value, const QString& picture = {});
    /// As above, with a text that no picture gives (money in the manner of the system's locale).
    void setValue(const QString& name, const QVariant& value, const QString& picture, const QString& text);
    void setVisible(const QString& name, bool visible);
    /// Picture for the column of a bound field.
    void setFormat(const QString& name, const QString& picture);

    /// Number of the page being made, from 1; 0 before the run.
    int pageNumber() const { return m_pageNumber; }

    /// A sentence for whoever reads the paper, shown above the preview.
    void addNote(const QString& sentence) { m_notes << sentence; }
    const QStringList& notes() const { return m_notes; }

    /// A report that has nothing to show says so before its run; whoever made it then drops it.
    void unload() { m_unloaded = true; }
    bool isUnloaded() const { return m_unloaded; }

protected:
    /// Whether the detail at hand stands at the top of a page.
    virtual bool startsPage() const { return false; }
    virtual void reportStart() {}
    /// Before each detail. eof comes in as "no current row" (true without rows); true ends the details.
    virtual void fetchData(bool& eof);
    virtual void reportHeaderFormat() {}
    virtual void pageHeaderFormat() {}
    virtual void groupHeaderFormat() {}
    virtual void detailFormat() {}
    virtual void groupFooterFormat() {}
    virtual void reportFooterFormat() {}
    virtual void pageFooterFormat() {}
    /// Once at the end of a run, however it ended.
    virtual void terminate() {}

private:
    friend class PageMaker;
    Control& found(const QString& name);
    /// Fills the bound fields of a section from the current row, if there is one.
    void bind(Section& section);
    void raiseFormat(SectionKind kind);
    Section* section(SectionKind kind);

    ReportDefinition m_definition;
    QHash<QString, Control*> m_byName;
    RecordsetPtr m_rows;
    QStringList m_notes;
    int m_pageNumber = 0;
    bool m_unloaded = false;
};

/// A field value as a report shows it: by the picture, or as default text, numbers with the system's own
/// decimal and thousands marks; NULL is the empty text.
QString shownText(const QVariant& value, const QString& picture);

}  // namespace platform
