#ifndef OSTREL_APPS_SETTINGS_SCREEN_PAGE_H
#define OSTREL_APPS_SETTINGS_SCREEN_PAGE_H

// Comes back from the PIN's page: drafts are still there.
void returnToScreenPage();

bool screenPageIsChanged();

#endif
