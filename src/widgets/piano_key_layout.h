#pragma once

#include "core/pitch.h"

#include <QRectF>

#include <optional>

/// The geometry of the 60 keys of five octaves; keys are counted from the lowest, which is a Do.
namespace piano_key_layout {

constexpr int kKeys = pitch::kNoteCount;
constexpr int kKeysInOctave = pitch::kSemitones;
constexpr int kNaturals = 35;

bool isSharp(int key);

/// The place of a key on a keyboard that fills `keyboard`. A natural's reaches under its sharps.
QRectF keyRect(int key, const QRectF& keyboard);

/// The part of a key's place that no other key lies over.
QRectF faceRect(int key, const QRectF& keyboard);

/// The key that is seen at a point: sharps lie over naturals.
std::optional<int> keyAt(QPointF point, const QRectF& keyboard);

}  // namespace piano_key_layout
