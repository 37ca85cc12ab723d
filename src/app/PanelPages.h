#pragma once

class Model;
class PageRegistry;

// Registers every area's pages, settings pieces and header items with the panel. The one place
// that knows them all: a new area adds its line here and nothing to the shell.
void registerPanelPages(PageRegistry& pages, Model& model);
