#pragma once

class ReportListView;
class SettingsStore;

/// The look of the track lists, section "Advanced". The list itself is the only model: it is read back when
/// the look is saved.

/// Grid lines alone, then colours and font in the order of the keys. A statement that fails is passed over.
void LoadGridLines(const SettingsStore &store, ReportListView &list);
void LoadListColorsAndFont(const SettingsStore &store, ReportListView &list);

/// Writes grid lines, colours and font.
void SaveListLook(const SettingsStore &store, const ReportListView &list);
