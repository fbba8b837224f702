// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "model/problems/Result.h"

#include <QtCore/QString>
#include <QtGui/QImage>

/// The picture in the PNG file @p name: ARGB32, straight alpha. The problem names the file.
Result<QImage> readPng(const QString& name);
