"""What is wrong with a configuration, in the words of its user: a line for each fault."""
import jsonschema
import yaml


def innermost(fault):
    """Of several ways to write something, the faults of the one that was tried."""
    ways = {}
    for inner in fault.context:
        ways.setdefault(inner.schema_path[0], []).append(inner)
    for faults in ways.values():
        if not any(inner.validator == "type" and not inner.path for inner in faults):
            return [deeper for inner in faults for deeper in innermost(inner)]
    return [fault]


def of_a_name(fault):
    return "propertyNames" in fault.absolute_schema_path


def place(fault):
    """"product depth_max, split_times"; blank for the configuration as a whole."""
    names = [str(name) for name in fault.absolute_path]
    if of_a_name(fault):
        names.append(str(fault.instance))
    if names[:1] == ["products"] and len(names) > 1:
        names[:2] = ["product " + names[1]]
    return ", ".join(names)


def faults_of(configuration, schema_file):
    with open(schema_file, encoding="utf-8") as handle:
        schema = yaml.safe_load(handle)
    for outer in jsonschema.Draft7Validator(schema).iter_errors(configuration):
        for fault in innermost(outer):
            reason = fault.schema.get("title")
            if reason and isinstance(fault.instance, str) and not of_a_name(fault):
                reason += ": " + fault.instance
            yield ": ".join(filter(None, [place(fault), reason or fault.message]))


def names_twice(file):
    """A line for each name that a file of the configuration gives twice: the reader of YAML takes the last of them."""
    with open(file, encoding="utf-8") as handle:
        try:
            nodes = [yaml.compose(handle)]
        except yaml.YAMLError:
            return
    while nodes:
        node = nodes.pop()
        if isinstance(node, yaml.MappingNode):
            names = [name.value for name, _ in node.value]
            yield from ("%s stands twice in %s" % (name, file) for name in dict.fromkeys(names) if names.count(name) > 1)
            nodes += [value for _, value in node.value]
