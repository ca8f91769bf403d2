#pragma once

#include <QBuffer>
#include <QByteArray>
#include <QXmlStreamReader>

#include <memory>

/// Reads the elements of an XML file of unknown origin one after the other. What could make a small
/// file costly, definitions of its own, very deep nesting or very long tags, is an error.
class XmlCursor {
public:
    /// The bytes must outlive the cursor.
    explicit XmlCursor(const QByteArray& bytes);

    /// Enters the next element inside of the present one; false at its end, or after an error.
    bool enterNext();

    /// Leaves the element that was entered last, whatever is still in it.
    void leave();

    /// The text of the element, which is left.
    QString takeText();

    QStringView name() const { return xml_->name(); }
    QString attribute(const char* name) const;

    bool failed() const { return failed_ || xml_->hasError(); }

private:
    QXmlStreamReader::TokenType read();

    QBuffer device_;
    std::unique_ptr<QXmlStreamReader> xml_;
    bool failed_ = false;
    int depth_ = 0;
};
