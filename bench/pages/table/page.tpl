<h1>{title}</h1>
<table>
<tr><th>Id</th><th>Number</th><th>Name</th><th>Category</th><th>Supplier</th><th>City</th><th>Note</th><th>Price</th><th>Weight</th><th>Stock</th></tr>
{dynamic rows}<tr>
<td>{*::id}</td><td>{*::sku}</td><td>{htmlspecialchars *::name}</td><td>{htmlspecialchars *::category}</td><td>{htmlspecialchars *::supplier}</td>
<td>{htmlspecialchars *::city}</td><td>{htmlspecialchars *::note}</td><td>{*::price}</td><td>{*::weight}</td><td>{*::stock}</td>
</tr>
{/dynamic}</table>
