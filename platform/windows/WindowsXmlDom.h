#pragma once

#include "platform/XmlDom.h"

namespace tarv {

class WindowsXmlParsers final : public XmlParsers {
public:
    Automated<XmlDocumentRef> create(std::wstring_view progId) override;
};

} // namespace tarv
