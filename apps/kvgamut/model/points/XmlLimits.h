// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "model/problems/Result.h"

#include <QtCore/QByteArray>

/// Checks an XML document before it is parsed: the depth of its elements, the number of attributes of each,
/// and that it declares no document type. A parser compares each attribute with all others of its element,
/// and the entities of a document type can multiply its size. Does not check anything else.
/// @return fails with XmlTooDeep, XmlTooManyAttributes or XmlHasDocumentType
Result<void> checkXml(const QByteArray& xml);
