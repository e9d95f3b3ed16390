// The plug-in module is made of the zelvane_plugin library as a whole; its
// entry points come from PluginAutoPRM's Q_PLUGIN_METADATA.
