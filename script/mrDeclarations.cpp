// How the base of the control recorders declares a window. Recorder process.
#include "script/mrDeclarations.h"

#include "model/mrBaseWindowFactory.h"
#include "model/mrRecorder.h"

CString mrBaseWindowFactory::get_id_name(const mrWindowInfo* info) const {
  return get_recorder()->get_namer().get_definition(info->id, "IDC_", info->dialog_template_id,
                                                    info->resource_library);
}

mrDeclarationRes mrBaseWindowFactory::get_named_declaration(const mrWindowInfo* info, CString& declaration,
                                                            CString& search, CString& identifier,
                                                            const char* script_name) {
  if (!*info->name)
    return declaredNot;
  declaration.Format("%sByID(\"%s\")", script_name, mrRecorder::quote_string(info->name).GetString());
  search = declaration;
  identifier = info->name;
  return declaredByName;
}

mrDeclarationRes mrBaseWindowFactory::get_named_declaration(const mrWindowInfo* info, CString& declaration,
                                                            CString& search, CString& identifier) {
  return get_named_declaration(info, declaration, search, identifier, get_script_name());
}

mrDeclarationRes mrBaseWindowFactory::get_declaration(const mrWindowInfo* info, CString& declaration,
                                                      CString& search, CString& identifier) {
  if (!is_wrapped_type(info->class_name))
    return declaredNot;
  if (get_named_declaration(info, declaration, search, identifier) == declaredByName)
    return declaredByName;

  const CString id_name = get_id_name(info);
  declaration.Format("%s(%s)", get_script_name(), id_name.GetString());
  search.Format("%s(%s, %s)", get_script_name(), id_name.GetString(), mr_recursive_search);
  identifier.Format("%s_%s", get_script_name(), id_name.GetString());
  return declaredByControlId;
}
